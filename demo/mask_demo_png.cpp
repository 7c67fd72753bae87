// A PNG of 8-bit RGB rows, written without a compressor: the image data is
// a zlib stream of stored (uncompressed) blocks; and a window's pixels saved so.
#include <windows.h>

#include <cstdio>
#include <cstdint>
#include <vector>

namespace {

uint32_t crc(const unsigned char* p, size_t n, uint32_t c = 0xFFFFFFFFu) {
    for (size_t i = 0; i < n; ++i) {
        c ^= p[i];
        for (int k = 0; k < 8; ++k) c = c & 1 ? 0xEDB88320u ^ (c >> 1) : c >> 1;
    }
    return c;
}

void be32(std::vector<unsigned char>& out, uint32_t v) {
    for (int s = 24; s >= 0; s -= 8) out.push_back((unsigned char)(v >> s));
}

void chunk(FILE* f, const char* type, const std::vector<unsigned char>& data) {
    std::vector<unsigned char> body(type, type + 4);
    body.insert(body.end(), data.begin(), data.end());
    std::vector<unsigned char> head, tail;
    be32(head, uint32_t(data.size()));
    be32(tail, crc(body.data(), body.size()) ^ 0xFFFFFFFFu);
    std::fwrite(head.data(), 1, 4, f), std::fwrite(body.data(), 1, body.size(), f), std::fwrite(tail.data(), 1, 4, f);
}

} // namespace

void SavePng(const char* file, int width, int height, const std::vector<unsigned char>& rgb) {
    std::vector<unsigned char> raw;
    for (int y = 0; y < height; ++y) {
        raw.push_back(0); // no filter
        raw.insert(raw.end(), rgb.begin() + size_t(y) * width * 3, rgb.begin() + size_t(y + 1) * width * 3);
    }
    std::vector<unsigned char> z = {0x78, 0x01};
    uint32_t a = 1, b = 0;
    for (size_t at = 0; at < raw.size() || at == 0;) {
        size_t n = raw.size() - at < 65535 ? raw.size() - at : 65535;
        z.push_back(at + n == raw.size());
        z.insert(z.end(), {(unsigned char)n, (unsigned char)(n >> 8), (unsigned char)~n, (unsigned char)(~n >> 8)});
        z.insert(z.end(), raw.begin() + at, raw.begin() + at + n);
        at += n;
        if (!n) break;
    }
    for (unsigned char c : raw) a = (a + c) % 65521, b = (b + a) % 65521;
    be32(z, b << 16 | a);
    std::vector<unsigned char> ihdr;
    be32(ihdr, uint32_t(width)), be32(ihdr, uint32_t(height));
    ihdr.insert(ihdr.end(), {8, 2, 0, 0, 0});
    FILE* f = std::fopen(file, "wb");
    if (!f) return;
    static const unsigned char sig[] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
    std::fwrite(sig, 1, 8, f);
    chunk(f, "IHDR", ihdr), chunk(f, "IDAT", z), chunk(f, "IEND", {});
    std::fclose(f);
}

// The window's pixels as the screen shows them.
void SaveWindowPng(HWND window, const char* file) {
    RECT r;
    GetWindowRect(window, &r);
    int width = r.right - r.left, height = r.bottom - r.top;
    HDC screen = GetDC(nullptr), mem = CreateCompatibleDC(screen);
    HBITMAP bmp = CreateCompatibleBitmap(screen, width, height);
    HGDIOBJ old = SelectObject(mem, bmp);
    BitBlt(mem, 0, 0, width, height, screen, r.left, r.top, SRCCOPY);
    SelectObject(mem, old);
    BITMAPINFO bi = {};
    bi.bmiHeader.biSize = sizeof bi.bmiHeader, bi.bmiHeader.biWidth = width, bi.bmiHeader.biHeight = -height;
    bi.bmiHeader.biPlanes = 1, bi.bmiHeader.biBitCount = 32, bi.bmiHeader.biCompression = BI_RGB;
    std::vector<unsigned char> bgra(size_t(width) * height * 4), rgb;
    GetDIBits(mem, bmp, 0, UINT(height), bgra.data(), &bi, DIB_RGB_COLORS);
    for (size_t i = 0; i < bgra.size(); i += 4) rgb.insert(rgb.end(), {bgra[i + 2], bgra[i + 1], bgra[i]});
    SavePng(file, width, height, rgb);
    DeleteObject(bmp), DeleteDC(mem), ReleaseDC(nullptr, screen);
}

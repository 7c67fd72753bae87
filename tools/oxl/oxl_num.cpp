// oxl num: a number formatted as plain text, as currency or under a picture,
// by chosen regional settings or the profile in force; the picture stored
// (tokenised) under one set of settings and shown under another; and a typed
// text read back to its record.
//
//   oxl num SETTINGS VALUE [PICTURE]        PICTURE "$": currency; none: plain
//   oxl num SETTINGS read TEXT [PICTURE]
//   SETTINGS: us, de, fr, ch, ja or profile; STORED/SHOWN (us/de) stores the
//   picture under the first and shows, formats and reads under the second.
#include "../named_settings.h"

#include <oxlrt31/numpic.h>

#include <cstdio>
#include <cstring>
#include <string>

namespace {

bool settingsOf(const std::string& name, FMTCNTLBLOCK* b) {
    if (const NamedSettings* s = NamedSettingsOf(name)) return NamedNumberBlock(*s, b), true;
    std::fprintf(stderr, "oxl num: no settings '%s' (us, de, fr, ch, ja, profile, or STORED/SHOWN)\n", name.c_str());
    return false;
}

std::string bytes(const char* s) {
    std::string out;
    char b[4];
    for (; *s; ++s) out += (std::snprintf(b, sizeof b, out.empty() ? "%02X" : " %02X", BYTE(*s)), b);
    return out;
}

std::string record(const tagNUMBER& n) {
    std::string out;
    char b[4];
    for (int i = 0; i <= (n.bLength & 0x3F) && i < 25; ++i)
        out += (std::snprintf(b, sizeof b, i ? " %02X" : "%02X", i ? n.abData[i - 1] : n.bLength), b);
    return out;
}

// The picture tokenised under `store` and untokenised under `show`; "" for
// a plain number or currency. False for a picture the storing settings refuse.
bool translate(FMTCNTLBLOCK& store, FMTCNTLBLOCK& show, const char* picture, std::string* tokens, std::string* user) {
    if (!picture || !std::strcmp(picture, "$")) {
        *tokens = *user = picture ? picture : "";
        return true;
    }
    if (std::strlen(picture) > 63) {
        std::fprintf(stderr, "oxl num: a picture has at most 63 bytes\n");
        return false;
    }
    store.lpszPicture = const_cast<char*>(picture);
    if (!FMTIsNumberPicValid(&store)) {
        std::fprintf(stderr, "oxl num: '%s' is not a valid number picture under these settings\n", picture);
        return false;
    }
    char out[256];
    store.lpszOutput = out;
    FMTTokenizeNumberPic(&store);
    *tokens = out;
    show.lpszPicture = const_cast<char*>(tokens->c_str());
    show.lpszOutput = out;
    FMTUnTokenizeNumberPic(&show);
    *user = out;
    return true;
}

bool readBack(FMTCNTLBLOCK& b, const char* text, const std::string& picture) {
    char out[256];
    std::string copy = text;
    b.lpszInput = const_cast<char*>(copy.c_str());
    b.lpszOutput = out;
    LONG ok;
    if (picture.empty()) {
        b.nType = FMT_NUMBER;
        ok = FMTValidateNumber(&b);
        if (ok) NumToAscii(&b.numValue, out, 108);
    } else {
        b.lpszPicture = const_cast<char*>(picture.c_str());
        ok = FMTUnformatNumberStr(&b);
    }
    if (!ok) {
        std::fprintf(stderr, "oxl num: '%s' does not read as a number%s\n", text, picture.empty() ? "" : " under the picture");
        return false;
    }
    std::printf("read back: %s (record %s)\n", out, record(b.numValue).c_str());
    return true;
}

} // namespace

int OxlNum(int argc, char** argv) {
    std::string names = argv[0];
    size_t slash = names.find('/');
    FMTCNTLBLOCK store, show;
    if (!settingsOf(names.substr(0, slash), &store) ||
        !settingsOf(slash == std::string::npos ? names : names.substr(slash + 1), &show))
        return 2;
    bool read = !std::strcmp(argv[1], "read");
    if (read && argc < 3) {
        std::fprintf(stderr, "oxl num: read needs a TEXT\n");
        return 2;
    }
    const char* picture = argc > (read ? 3 : 2) ? argv[read ? 3 : 2] : nullptr;
    std::string tokens, user;
    if (!translate(store, show, picture, &tokens, &user)) return 1;
    if (picture && *tokens.c_str() && tokens != "$") {
        std::printf("picture \"%s\", stored as: %s\n", picture, bytes(tokens.c_str()).c_str());
        std::printf("shown as: \"%s\"\n", user.c_str());
    }
    if (read) return readBack(show, argv[2], tokens) ? 0 : 1;
    tagNUMBER value;
    int r = NumAsciiToNumber(&value, argv[1]);
    if (r <= 0 || argv[1][r]) {
        std::fprintf(stderr, "oxl num: '%s' is not a number\n", argv[1]);
        return 2;
    }
    show.nType = picture ? FMT_PICTURE : FMT_NUMBER;
    show.lpszPicture = const_cast<char*>(tokens.c_str());
    show.numValue = value;
    LONG room = FMTGetMaxFormattedNumLen(const_cast<char*>(user.c_str()), 40, 0);
    char text[512];
    show.lpszOutput = text;
    if (!FMTFormatNumber(&show)) {
        std::fprintf(stderr, "oxl num: FMTFormatNumber failed\n");
        return 1;
    }
    std::printf("%s -> \"%s\" (%zu bytes; a host gives room for %ld)\n", argv[1], text, std::strlen(text), long(room));
    return readBack(show, text, tokens) ? 0 : 1;
}

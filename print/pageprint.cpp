// The page layer: one document page of the host over one or more sheets.
// All geometry is in MM_HIENGLISH (thousandths of an inch, y up); sizes in
// the tiling record are positive. Sheets run: for each document page, for
// each tile (along a row, then down), for each software copy.
#include "print/print.h"

#include "os/osl.h"

#include <cstdlib>
#include <cstring>

namespace {

enum { kDraftMode = 7, kQueryEscSupport = 8, kGetPhysPageSize = 12, kGetPrintingOffset = 13, kSetCopyCount = 17 };
constexpr LONG kCutTolerance = 20; // a fiftieth of an inch

struct PageTiling {
    PagePrintInfo* info; // first: the job driver reads the bins through it
    LONG Columns, Rows, Tiles, Tile, Copy, CopyCount;
    LONG LeftShift, TopShift, PaperWidth, PaperHeight, DeviceWidth, DeviceHeight;
    LONG MarginLeft, MarginTop, EdgeRight, EdgeBottom, DeviceMarginLeft, DeviceMarginTop;
};

bool supports(HDC dc, int escape) {
    return gOsl.graphics->Escape(dc, kQueryEscSupport, sizeof escape, reinterpret_cast<LPCSTR>(&escape), nullptr) > 0;
}
POINT toLogical(HDC dc, LONG x, LONG y) {
    POINT p = {x, y};
    gOsl.graphics->DPtoLP(dc, &p, 1);
    return p;
}
RECT clipBox(HDC dc) {
    RECT r = {};
    gOsl.graphics->GetClipBox(dc, &r);
    return r;
}

void measure(HDC dc, PageTiling* t) {
    const OslGraphicsService* gdi = gOsl.graphics;
    POINT size = {};
    if (supports(dc, kGetPhysPageSize)) gdi->Escape(dc, kGetPhysPageSize, 0, nullptr, &size);
    else size = {gdi->GetDeviceCaps(dc, PHYSICALWIDTH), gdi->GetDeviceCaps(dc, PHYSICALHEIGHT)};
    t->DeviceWidth = size.x;
    t->DeviceHeight = size.y;
    POINT paper = toLogical(dc, size.x, size.y);
    t->PaperWidth = paper.x;
    t->PaperHeight = std::labs(paper.y);
}

void copies(HDC dc, PageTiling* t) {
    PagePrintInfo* p = t->info;
    if (supports(dc, kSetCopyCount)) {
        LONG in = p->Copies, out = 0;
        gOsl.graphics->Escape(dc, kSetCopyCount, sizeof in, reinterpret_cast<LPCSTR>(&in), &out);
        t->CopyCount = 1;
    } else if (p->Job.DevMode && p->Job.DevMode->dmCopies > 1) {
        t->CopyCount = 1;
    } else {
        t->CopyCount = p->Copies;
    }
}

// Cuts a page dimension to the paper when tiling isn't wanted or the excess
// is within the tolerance; true when it was cut.
bool cut(LONG& page, LONG paper, bool split) {
    if (page <= paper || (split && page - paper > kCutTolerance)) return false;
    page = paper;
    return true;
}

void correctSize(HDC dc, PageTiling* t, LONG clipWidth, LONG clipHeight) {
    PagePrintInfo* p = t->info;
    bool split = p->SplitAcross || p->SplitDown;
    bool widthCut = cut(p->PageWidth, t->PaperWidth, split);
    bool heightCut = cut(p->PageHeight, t->PaperHeight, split);
    if (!p->SnapToPaper) {
        POINT q = {p->PageWidth, p->PageHeight};
        gOsl.graphics->LPtoDP(dc, &q, 1);
        gOsl.graphics->DPtoLP(dc, &q, 1);
        p->PageWidth = q.x;
        p->PageHeight = q.y;
    } else if (widthCut != heightCut) {
        if (widthCut) {
            LONG top = std::labs(toLogical(dc, 0, gOsl.graphics->GetDeviceCaps(dc, PHYSICALOFFSETY)).y);
            if (clipHeight < p->PageHeight - 2 * top) p->PageHeight = t->PaperHeight;
        } else {
            LONG left = toLogical(dc, gOsl.graphics->GetDeviceCaps(dc, PHYSICALOFFSETX), 0).x;
            if (clipWidth < p->PageWidth - 2 * left) p->PageWidth = t->PaperWidth;
        }
    }
}

void margins(HDC dc, PageTiling* t, LONG clipWidth, LONG clipHeight) {
    if (!supports(dc, kGetPrintingOffset)) return; // all stay 0
    t->DeviceMarginLeft = gOsl.graphics->GetDeviceCaps(dc, PHYSICALOFFSETX);
    t->DeviceMarginTop = gOsl.graphics->GetDeviceCaps(dc, PHYSICALOFFSETY);
    POINT m = toLogical(dc, t->DeviceMarginLeft, t->DeviceMarginTop);
    t->MarginLeft = m.x;
    t->MarginTop = std::labs(m.y);
    t->EdgeRight = t->MarginLeft + clipWidth - t->PaperWidth;
    t->EdgeBottom = t->MarginTop + clipHeight - t->PaperHeight;
}

LONG startDoc(HDC dc, PageTiling* t) {
    PagePrintInfo* p = t->info;
    RECT clip = clipBox(dc);
    LONG clipWidth = std::labs(clip.right - clip.left), clipHeight = std::labs(clip.bottom - clip.top);
    if (supports(dc, kDraftMode)) {
        LONG draft = p->DraftMode;
        gOsl.graphics->Escape(dc, kDraftMode, sizeof draft, reinterpret_cast<LPCSTR>(&draft), nullptr);
    }
    copies(dc, t);
    measure(dc, t);
    correctSize(dc, t, clipWidth, clipHeight);
    t->LeftShift = p->PageLeft < 0 ? 0 : p->PageLeft;
    t->TopShift = p->PageTop < 0 ? 0 : p->PageTop;
    margins(dc, t, clipWidth, clipHeight);
    // A zero paper size has no tile count: such a device gets one tile.
    t->Columns = t->PaperWidth > 0 ? (t->LeftShift + p->PageWidth - 1) / t->PaperWidth + 1 : 1;
    t->Rows = t->PaperHeight > 0 ? (t->TopShift + p->PageHeight - 1) / t->PaperHeight + 1 : 1;
    t->Tiles = t->Columns * t->Rows;
    t->Copy = t->Tile = 1;
    return 1;
}

// Column and row of the current tile, from 1.
POINT tileCell(const PageTiling* t) {
    if (t->Tile < 1 || t->Tile > t->Tiles) return {t->Tile, t->Tiles};
    return {(t->Tile - 1) % t->Columns + 1, (t->Tile - 1) / t->Columns + 1};
}

// The logical point at the tile's corner: the paper corner for column and
// row 1; further tiles are shifted by the printable size.
POINT tileOrigin(const PageTiling* t) {
    POINT c = tileCell(t), o = {0, 0};
    if (c.x > 1) o.x = (t->PaperWidth - t->EdgeRight - t->MarginLeft) * (c.x - 2) - t->MarginLeft + t->PaperWidth;
    if (c.y > 1) o.y = -((t->PaperHeight - t->MarginTop - t->EdgeBottom) * (c.y - 2) - t->EdgeBottom + t->PaperHeight);
    return o;
}

void setMapping(HDC dc, const PageTiling* t) {
    const OslGraphicsService* gdi = gOsl.graphics;
    POINT c = tileCell(t), o = tileOrigin(t);
    LONG vx = c.x == 1 ? -t->DeviceMarginLeft : 0, vy = c.y == 1 ? -t->DeviceMarginTop : 0;
    // Extents: no effect in MM_HIENGLISH, passed as the tile's size.
    LONG w = t->PaperWidth - (c.x > 1 ? t->MarginLeft : 0) - (c.x < t->Columns ? -t->EdgeRight : 0);
    LONG h = t->PaperHeight - (c.y > 1 ? t->MarginTop : 0) - (c.y < t->Rows ? -t->EdgeBottom : 0);
    gdi->SetWindowOrgEx(dc, o.x, o.y, nullptr);
    gdi->SetWindowExtEx(dc, w, h, nullptr);
    gdi->SetViewportOrgEx(dc, vx, vy, nullptr);
    gdi->SetViewportExtEx(dc, t->DeviceWidth, -t->DeviceHeight, nullptr);
}

LONG nextBand(HDC dc, PageTiling* t, RECT* band) {
    if (band->left == band->right || band->top == band->bottom) return 1;
    setMapping(dc, t);
    RECT clip = clipBox(dc);
    if (clip.left == clip.right || clip.top == clip.bottom) return 1;
    PagePrintInfo* p = t->info;
    if (p->DrawFrame) {
        POINT o = tileOrigin(t);
        gOsl.graphics->SetBkMode(dc, TRANSPARENT);
        gOsl.graphics->Rectangle(dc, o.x, o.y, o.x + p->PageWidth, o.y - p->PageHeight);
    }
    LONG across = 0, down = 0;
    if (p->DrawPage) p->DrawPage(dc, PRINT_NEXTBAND, band, p->HostData, 0, 0, 0, &across, &down);
    if (!across) {
        t->Columns = 1;
        t->Tiles = t->Rows;
    }
    if (!down) {
        t->Rows = 1;
        t->Tiles = t->Columns;
    }
    return 1;
}

LONG newFrame(PageTiling* t) {
    if (t->Copy == t->CopyCount && t->Tile >= t->Tiles) {
        PagePrintInfo* p = t->info;
        if (!p->NextPage || !p->NextPage(p->HostData)) return 0;
        t->Copy = t->Tile = 1;
        return 1;
    }
    if (t->Copy == t->CopyCount) {
        t->Copy = 1;
        ++t->Tile;
    } else {
        ++t->Copy;
    }
    return 1;
}

LONG pageJobCallback(HDC dc, int code, RECT* rect, void* data, LPARAM, LPARAM, LPARAM) {
    PageTiling* t = static_cast<PageTiling*>(data);
    gOsl.graphics->SetMapMode(dc, MM_HIENGLISH);
    switch (code) {
    case PRINT_STARTDOC: return startDoc(dc, t);
    case PRINT_NEXTBAND: return nextBand(dc, t, rect);
    case PRINT_NEWFRAME: return newFrame(t);
    default: return 1;
    }
}

} // namespace

BOOL OXLAPI PagePrint(HWND parent, PagePrintInfo* info) {
    PageTiling tiling;
    std::memset(&tiling, 0, sizeof tiling);
    tiling.info = info;
    if (info->PageCount < 1) info->PageCount = 1;
    PrintRunJob(parent, &info->Job, pageJobCallback, &tiling);
    return TRUE;
}

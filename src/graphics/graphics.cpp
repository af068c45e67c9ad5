#include "graphics/graphics.h"
#include "bridge/arithmetic.h"
#include "bridge/leaf_lock.h"
#include "bridge/links.h"
#include "bridge/lock.h"
#include "bridge/memory.h"

static GraphicsRecord* onWindows; // all that are on a window that is there

static constexpr wchar_t noContext[] = L"Unable to allocate enough memory for device context";

static GraphicsRecord* beginOnControl(GraphicsRecord* graphics) { return graphics; }

static GraphicsRecord* endOnControl(GraphicsRecord* graphics) { return graphics; }

// A bitmap is in one device context at a time: the one that draws takes it from the one before.
static GraphicsRecord* beginOnImage(GraphicsRecord* graphics) {
    ImageRecord* image = graphics->image;
    EnterCriticalSection(&image->lock);
    if (image->selectedDC == graphics->dc) return graphics;
    if (image->selectedDC) SelectObject(image->selectedDC, image->placeholderBitmap);
    image->selectedDC = graphics->dc;
    SelectObject(graphics->dc, image->bitmap);
    return graphics;
}

static GraphicsRecord* endOnImage(GraphicsRecord* graphics) {
    LeaveCriticalSection(&graphics->image->lock);
    return graphics;
}

static void clipTo(HDC dc, const RECT& bounds) {
    HRGN region = CreateRectRgnIndirect(&bounds);
    if (!region) return;
    SelectClipRgn(dc, region);
    DeleteObject(region);
}

GraphicsRecord Graphics_On(HDC dc, const RECT& bounds) {
    GraphicsRecord graphics = {};
    clipTo(dc, bounds);
    GetObjectW(GetCurrentObject(dc, OBJ_PEN), sizeof(graphics.pen), &graphics.pen);
    graphics.bounds = bounds;
    graphics.dc = dc;
    graphics.beginDraw = beginOnControl;
    graphics.endDraw = endOnControl;
    return graphics;
}

GraphicsRecord* Graphics_New(HDC dc, ImageRecord* image, const RECT& bounds, ErrorRecord* error) {
    auto* graphics = allocate<GraphicsRecord>();
    if (!graphics) {
        Win32Error_SetError(error, errorOutOfMemory, noContext);
        return nullptr;
    }
    *graphics = Graphics_On(dc, bounds);
    if (!image) return graphics;
    Image_Join(image);
    graphics->image = image;
    graphics->beginDraw = beginOnImage;
    graphics->endDraw = endOnImage;
    return graphics;
}

// The bitmap that every memory context starts with: it takes the image's place.
static HBITMAP initialBitmapOf(HDC dc) {
    HBITMAP empty = CreateCompatibleBitmap(dc, 0, 0);
    auto initial = static_cast<HBITMAP>(SelectObject(dc, empty));
    SelectObject(dc, initial);
    DeleteObject(empty);
    return initial;
}

GraphicsRecord* Image_NewGraphics(ImageRecord* image, ErrorRecord* error) {
    HDC dc = CreateCompatibleDC(nullptr);
    if (!dc) {
        Win32Error_SetLast(error, noContext);
        return nullptr;
    }
    if (HBITMAP initial = initialBitmapOf(dc)) image->placeholderBitmap = initial;
    Section section = sectionOf(image);
    GraphicsRecord* graphics =
        Graphics_New(dc, image, {0, 0, section.width, section.height}, error);
    if (!graphics) DeleteDC(dc);
    return graphics;
}

static void putBackObjects(const GraphicsRecord* graphics) {
    if (graphics->savedPen) DeleteObject(SelectObject(graphics->dc, graphics->savedPen));
    if (graphics->savedBrush) DeleteObject(SelectObject(graphics->dc, graphics->savedBrush));
}

// Until the bitmap is given back another thread may take it out, and a device context serves one
// thread at a time.
static void giveBack(const GraphicsRecord* graphics, ImageRecord* image) {
    Lock lock(&image->lock);
    putBackObjects(graphics);
    if (image->selectedDC != graphics->dc) return;
    SelectObject(graphics->dc, image->placeholderBitmap);
    image->selectedDC = nullptr;
}

static void leaveImage(const GraphicsRecord* graphics) {
    giveBack(graphics, graphics->image);
    DeleteDC(graphics->dc);
    Image_Leave(graphics->image);
}

// Under the lock of the list.
static void leaveControl(GraphicsRecord* graphics) {
    takeOut<&GraphicsRecord::next>(&onWindows, graphics);
    putBackObjects(graphics);
    ReleaseDC(nullptr, graphics->dc);
    graphics->dc = nullptr;
    graphics->savedPen = nullptr;
    graphics->savedBrush = nullptr;
}

void Graphics_EnterWindow(GraphicsRecord* graphics, HWND window) {
    LeafLock lock;
    graphics->window = window;
    graphics->next = onWindows;
    onWindows = graphics;
}

void Graphics_LeaveWindow(HWND window) {
    LeafLock lock;
    GraphicsRecord* next;
    for (GraphicsRecord* graphics = onWindows; graphics; graphics = next) {
        next = graphics->next;
        if (graphics->window == window) leaveControl(graphics);
    }
}

static void leaveTarget(GraphicsRecord* graphics) {
    if (graphics->image) {
        leaveImage(graphics);
        return;
    }
    LeafLock lock;
    if (graphics->dc) leaveControl(graphics);
}

void Graphics_Dispose(GraphicsRecord* graphics, ErrorRecord*) {
    leaveTarget(graphics);
    Font_Wear(graphics->font, nullptr);
    freeBlock(graphics);
}

// Selects an object of the context's own. The first one that it displaces is kept for the end, the
// later ones were the context's own too. What cannot be selected is not kept.
template <class Handle>
static void selectOwn(HDC dc, Handle object, Handle* saved) {
    HGDIOBJ displaced = SelectObject(dc, object);
    if (!displaced)
        DeleteObject(object);
    else if (*saved)
        DeleteObject(displaced);
    else
        *saved = static_cast<Handle>(displaced);
}

static void usePen(GraphicsRecord* graphics, const LOGPEN& description, ErrorRecord* error) {
    HPEN pen = CreatePenIndirect(&description);
    if (!pen) {
        Win32Error_SetLast(error, L"Unable to create new pen");
        return;
    }
    graphics->pen = description;
    selectOwn(graphics->dc, pen, &graphics->savedPen);
}

void Graphics_SetForeground(GraphicsRecord* graphics, ColorRecord* color, ErrorRecord* error) {
    Drawing drawing(graphics);
    SetTextColor(drawing, color->color); // stays even when there is no pen
    LOGPEN pen = graphics->pen;
    pen.lopnColor = color->color;
    usePen(graphics, pen, error);
}

void Graphics_SetBackground(GraphicsRecord* graphics, ColorRecord* color, ErrorRecord* error) {
    Drawing drawing(graphics);
    if (SetBkColor(drawing, color->color) == CLR_INVALID) {
        Win32Error_SetLast(error, L"Error in setting background color");
        return;
    }
    HBRUSH brush = CreateSolidBrush(color->color);
    if (!brush) {
        Win32Error_SetLast(error, L"Error creating new background brush");
        return;
    }
    selectOwn(graphics->dc, brush, &graphics->savedBrush);
}

void Graphics_SetLineWidth(GraphicsRecord* graphics, jint width, ErrorRecord* error) {
    Drawing drawing(graphics);
    LOGPEN pen = graphics->pen;
    if (width == pen.lopnWidth.x) return;
    pen.lopnWidth.x = width;
    usePen(graphics, pen, error);
}

static void wear(GraphicsRecord* graphics, HFONT font) {
    Font_Wear(graphics->font, font);
    graphics->font = font;
}

void Graphics_SetFont(GraphicsRecord* graphics, FontRecord* font, ErrorRecord* error) {
    Drawing drawing(graphics);
    if (!font) {
        SelectObject(drawing, GetStockObject(SYSTEM_FONT));
        wear(graphics, nullptr);
        return;
    }
    if (SelectObject(drawing, font->font))
        wear(graphics, font->font);
    else
        Win32Error_SetLast(error, L"Unable to select new font into device context");
}

static void setClip(GraphicsRecord* graphics, const RECT& area, ErrorRecord* error) {
    Drawing drawing(graphics);
    HRGN region = CreateRectRgnIndirect(&area);
    if (!region) {
        Win32Error_SetError(error, errorFailed, L"Unable to create clip region");
        return;
    }
    if (SelectClipRgn(drawing, region) == ERROR)
        Win32Error_SetError(error, errorFailed, L"Unable to select clip region");
    DeleteObject(region);
}

void Graphics_SetClipping(GraphicsRecord* graphics, jint x, jint y, jint width, jint height,
                          ErrorRecord* error) {
    RECT asked = {x, y, saturatingAdd(x, width), saturatingAdd(y, height)};
    RECT area;
    IntersectRect(&area, &asked, &graphics->bounds);
    setClip(graphics, area, error);
}

void Graphics_ClearClipping(GraphicsRecord* graphics, ErrorRecord* error) {
    setClip(graphics, graphics->bounds, error);
}

void Graphics_SetXORMode(GraphicsRecord* graphics, bool on, ErrorRecord*) {
    Drawing drawing(graphics);
    SetROP2(drawing, on ? R2_XORPEN : R2_COPYPEN);
}

void Graphics_SetLineNodeStyle(GraphicsRecord*, jint, jint, jint, ErrorRecord*) {}

// Every primitive on every kind of surface, pixel by pixel: sheets kept as text beside this file.
// A line "c RRGGBB" names the colour of a character; the rows of the picture follow. A sheet that
// differs is written to the working folder as NAME.sheet, to be looked at and kept if it is right.

#include "device.h"
#include "graphics/graphics.h"
#include "variety.h"
#include <fstream>
#include <map>
#include <sstream>

namespace {

constexpr int quadrantWidth = 64;
constexpr int quadrantHeight = 56;
constexpr int sheetWidth = 2 * quadrantWidth;
constexpr int sheetHeight = 2 * quadrantHeight;

struct Surface {
    const char* name;
    int depth; // bits per pixel; 0: a control
};
std::ostream& operator<<(std::ostream& out, const Surface& surface) { return out << surface.name; }

} // namespace

class SheetsTest : public DeviceTest, public testing::WithParamInterface<Surface> {
  protected:
    template <class Signature, class... Arguments>
    void draw(const Native<Signature>& shape, Arguments... arguments) {
        call(shape, graphics, arguments...);
    }
    jint newColor(jint red, jint green, jint blue) {
        return call(OS::Color_New, display, red, green, blue);
    }

    jint newIndexedImage(int depth) {
        int stride = (sheetWidth * depth + 31) / 32 * 4;
        std::vector<jbyte> reds = {jbyte(255), 0}, greens = reds, blues = reds;
        if (depth > 1) {
            reds = {jbyte(255), jbyte(255), 0, 0, 0, jbyte(255), 0, jbyte(255)};
            greens = {jbyte(255), 0, jbyte(255), 0, 0, jbyte(255), jbyte(255), 0};
            blues = {jbyte(255), 0, 0, jbyte(255), 0, 0, jbyte(255), jbyte(255)};
        }
        return call(OS::Image_NewFromByteData, display, sheetWidth, sheetHeight,
                    vm.newBytes(std::vector<jbyte>(stride * sheetHeight)), stride, depth,
                    vm.newBytes(reds), vm.newBytes(greens), vm.newBytes(blues), jint(reds.size()),
                    -1);
    }
    jint newDirectImage(int depth) {
        std::vector<jint> white(sheetWidth * sheetHeight, depth == 16 ? 0xFFFF : 0xFFFFFF);
        jbyteArray alpha =
            depth == 32 ? vm.newBytes(std::vector<jbyte>(white.size(), jbyte(255))) : nullptr;
        return call(OS::Image_NewFromIntData, display, sheetWidth, sheetHeight, vm.newInts(white),
                    depth == 32 ? 24 : depth, -1, -1, alpha);
    }
    void open(int depth) {
        if (depth == 0) {
            surface = call(OS::Composite_New, newShell(), 0);
            call(OS::Control_SetBounds, surface, 0, 0, sheetWidth, sheetHeight);
            call(OS::Control_SetVisible, surface, true);
            dispatchAll();
            graphics = call(OS::Control_NewGraphics, surface);
            draw(OS::Graphics_FillBackground, newColor(255, 255, 255), 0, 0, sheetWidth,
                 sheetHeight);
            return;
        }
        surface = depth <= 8 ? newIndexedImage(depth) : newDirectImage(depth);
        graphics = call(OS::Image_NewGraphics, surface);
    }
    // Of as many pixels on every screen.
    void setFont() {
        constexpr int points = 8, usualDotsPerInch = 96;
        jint font = call(OS::Font_NewLogical, display, 4,
                         points * usualDotsPerInch / theDevice().dotsPerInch, 0);
        call(OS::Graphics_SetFont, graphics, font);
    }

    void drawShapes(int x, int y) {
        draw(OS::Graphics_DrawLine, x + 1, y + 1, x + 12, y + 7);
        draw(OS::Graphics_DrawRectangle, x + 14, y + 1, 10, 8);
        draw(OS::Graphics_DrawRoundRectangle, x + 26, y + 1, 12, 9, 6, 5);
        draw(OS::Graphics_DrawOval, x + 40, y + 1, 11, 9);
        draw(OS::Graphics_DrawArc, x + 53, y + 1, 10, 10, 30, 200);
        draw(OS::Graphics_DrawPolygon, vm.newInts({x + 1, y + 20, x + 6, y + 12, x + 11, y + 20}),
             6);
        draw(OS::Graphics_DrawPolyline,
             vm.newInts({x + 13, y + 20, x + 18, y + 12, x + 23, y + 20}), 6);
        draw(OS::Graphics_FillRectangle, x + 25, y + 12, 8, 8);
        draw(OS::Graphics_FillRoundRectangle, x + 34, y + 12, 9, 9, 5, 5);
        draw(OS::Graphics_FillOval, x + 44, y + 12, 9, 9);
        draw(OS::Graphics_FillArc, x + 53, y + 12, 10, 10, 45, 270);
        draw(OS::Graphics_FillPolygon, vm.newInts({x + 1, y + 30, x + 6, y + 22, x + 11, y + 30}),
             6);
        call(OS::Graphics_SetLineWidth, graphics, 3);
        draw(OS::Graphics_DrawLine, x + 14, y + 24, x + 24, y + 30);
        call(OS::Graphics_SetLineWidth, graphics, 1);
        draw(OS::Graphics_DrawString, vm.newString(u"Ag"), x + 28, y + 22, 0);
        draw(OS::Graphics_DrawString, vm.newString(u"Ag"), x + 46, y + 22, 8);
    }
    void drawImages(int x, int y) {
        auto direct = [&](jint transparent, jbyteArray alpha) {
            return call(
                OS::Image_NewFromIntData, display, 4, 2,
                vm.newInts({0xFF0000, 0x00FF00, 0x0000FF, 0, 0, 0x0000FF, 0x00FF00, 0xFF0000}), 24,
                transparent, -1, alpha);
        };
        jbyteArray alpha =
            vm.newBytes({0, 64, jbyte(128), jbyte(255), jbyte(255), jbyte(128), 64, 0});
        jint opaque = direct(-1, nullptr);
        jint masked = direct(0x00FF00, nullptr);
        jint blended = direct(-1, alpha);
        draw(OS::Graphics_DrawImage, opaque, x + 1, y + 36);
        draw(OS::Graphics_DrawImage, masked, x + 8, y + 36);
        draw(OS::Graphics_DrawImage, blended, x + 15, y + 36);
        for (jint image : {opaque, masked, blended}) {
            int left = x + 22 + 14 * (image == masked ? 1 : image == blended ? 2 : 0);
            draw(OS::Graphics_DrawImageRegion, image, 1, 0, 3, 2, left, y + 36, 9, 6);
        }
        draw(OS::Graphics_CopyArea, x + 1, y + 1, 30, 8, x + 30, y + 46);
    }
    void drawQuadrant(int column, int row) {
        int x = column * quadrantWidth, y = row * quadrantHeight;
        call(OS::Graphics_ClearClipping, graphics);
        if (column == 1)
            call(OS::Graphics_SetClipping, graphics, x + 5, y + 4, quadrantWidth - 10,
                 quadrantHeight - 8);
        call(OS::Graphics_SetXORMode, graphics, row == 1);
        drawShapes(x, y);
        drawImages(x, y);
    }

    // What was drawn, as a sheet.
    std::string sheet() {
        HDC dc = reinterpret_cast<GraphicsRecord*>(graphics)->dc;
        std::map<COLORREF, char> names;
        std::ostringstream header, rows;
        for (int y = 0; y < sheetHeight; ++y) {
            for (int x = 0; x < sheetWidth; ++x) {
                COLORREF color = GetPixel(dc, x, y);
                if (!names.count(color)) {
                    char name = ".abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789"
                        [names.size() % 63];
                    names[color] = name;
                    char line[20];
                    snprintf(line, sizeof(line), "%c %02X%02X%02X\n", name, GetRValue(color),
                             GetGValue(color), GetBValue(color));
                    header << line;
                }
                rows << names[color];
            }
            rows << '\n';
        }
        return header.str() + rows.str();
    }

    jint surface, graphics;
};

static std::string readFile(const std::string& path) {
    std::ifstream file(path);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

TEST_P(SheetsTest, is_as_it_was_looked_at) {
    open(GetParam().depth);
    call(OS::Graphics_SetForeground, graphics, newColor(255, 0, 0));
    call(OS::Graphics_SetBackground, graphics, newColor(0, 255, 0));
    setFont();
    for (int row : {0, 1})
        for (int column : {0, 1}) drawQuadrant(column, row);
    std::string drawn = sheet();
    std::string name = GetParam().name;
    std::string expected = readFile(std::string(SHEETS_FOLDER "/") + name + ".sheet");
    if (drawn != expected) {
        std::ofstream(name + ".sheet") << drawn;
        ADD_FAILURE() << name << " differs; what was drawn is in " << name << ".sheet";
    }
    call(OS::Graphics_Dispose, graphics);
}

INSTANTIATE_TEST_SUITE_P(Surfaces, SheetsTest,
                         testing::Values(Surface{"control", 0}, Surface{"image1", 1},
                                         Surface{"image4", 4}, Surface{"image8", 8},
                                         Surface{"image16", 16}, Surface{"image24", 24},
                                         Surface{"image32", 32}),
                         testing::PrintToStringParamName());

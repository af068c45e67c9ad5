#include "png.h"
#include "rows.h"
#include <fstream>

// Images of other kinds than the usual ones.

static jint imageWithAlpha(Scene& scene) {
    return jint(scene.tell(OS::Image_NewFromIntData, scene.display, 10, 10,
                           scene.vm.newInts(std::vector<jint>(100, 0xAA5511)), 24, -1, -1,
                           scene.vm.newBytes(std::vector<jbyte>(100, 0x55))));
}
static jint imageWithKeyColor(Scene& scene) {
    return jint(scene.tell(OS::Image_NewFromIntData, scene.display, 10, 10,
                           scene.vm.newInts(std::vector<jint>(100, 0xAA5511)), 24, 0x1155AA, -1,
                           nullptr));
}

void addImages(Rows* rows) {
    static const Png pngs[] = {
        {4, 4, 8, 2, std::vector<uint8_t>(48, 9), {}, {}},
        {4, 4, 8, 6, std::vector<uint8_t>(64, 9), {}, {}},
        {4, 4, 8, 3, std::vector<uint8_t>(16, 1), {1, 2, 3, 4, 5, 6}, {0}},
        {4, 4, 4, 3, std::vector<uint8_t>(8, 0x11), {1, 2, 3, 4, 5, 6}, {}},
    };
    static const char* const names[] = {"of colors", "with alpha", "of a palette with alpha",
                                        "of a palette"};
    for (size_t i = 0; i < std::size(pngs); ++i)
        rows->push_back(
            {.native = OS::Image_NewFromFileData.name, .state = names[i], .act = [=](Scene& scene) {
                 std::vector<uint8_t> file = encode(pngs[i]);
                 return scene.tell(OS::Image_NewFromFileData, scene.display,
                                   scene.vm.newBytes({file.begin(), file.end()}),
                                   jint(file.size()));
             }});
    static const std::pair<const char*, jint (*)(Scene&)> kinds[] = {
        {"image with alpha", imageWithAlpha}, {"image with a key color", imageWithKeyColor}};
    for (const auto& [state, make] : kinds) {
        auto before = [make = make](Scene& scene) { scene.made = make(scene); };
        auto add = [&](const std::string& native, const std::string& of,
                       const std::function<DWORD(Scene&)>& act) {
            rows->push_back({.native = native,
                             .state = of,
                             .before = before,
                             .act = act,
                             .after = [=](Scene& scene, DWORD result) {
                                 if (result && native == OS::Image_NewGraphics.name)
                                     scene.tell(OS::Graphics_Dispose, jint(result));
                                 else if (result && (native == OS::Image_NewFromHandle.name ||
                                                     native == OS::Image_Flip.name))
                                     scene.tell(OS::Image_Dispose, jint(result));
                                 scene.tell(OS::Image_Dispose, scene.made);
                             }});
        };
        for (Kind kind : {Kind::graphics, Kind::controlGraphics}) {
            std::string on =
                std::string(state) + (kind == Kind::graphics ? " on an image" : " on a control");
            add(OS::Graphics_DrawImage.name, on, [=](Scene& scene) {
                return scene.tell(OS::Graphics_DrawImage, scene.the(kind), scene.made, 1, 1);
            });
            add(OS::Graphics_DrawImageRegion.name, on, [=](Scene& scene) {
                return scene.tell(OS::Graphics_DrawImageRegion, scene.the(kind), scene.made, 1, 1,
                                  4, 4, 2, 2, 8, 9);
            });
        }
        add(OS::Image_NewFromHandle.name, state, [](Scene& scene) {
            return scene.tell(OS::Image_NewFromHandle, scene.display, scene.made);
        });
        add(OS::Image_Flip.name, state, [](Scene& scene) {
            return scene.tell(OS::Image_Flip, scene.made, true, true, 0, 0, 10, 10);
        });
        add(OS::Image_NewGraphics.name, state,
            [](Scene& scene) { return scene.tell(OS::Image_NewGraphics, scene.made); });
        add(OS::Image_SetRGB.name, state,
            [](Scene& scene) { return scene.tell(OS::Image_SetRGB, scene.made, 1, 1, 0x445566); });
        add(OS::Image_GetRGB.name, state, [](Scene& scene) {
            return scene.tell(OS::Image_GetRGB, scene.made, 0, 0, 5, 5, 0, 5,
                              scene.vm.newInts(std::vector<jint>(25)));
        });
    }
}

void addFiles(Rows* rows) {
    rows->push_back({.native = OS::Image_NewFromFile.name,
                     .state = "there",
                     .before =
                         [](Scene&) {
                             std::vector<uint8_t> file =
                                 encode({4, 4, 8, 2, std::vector<uint8_t>(48, 9), {}, {}});
                             std::ofstream("C:\\image.png", std::ios::binary)
                                 .write(reinterpret_cast<char*>(file.data()), file.size());
                         },
                     .act =
                         [](Scene& scene) {
                             return scene.tell(OS::Image_NewFromFile, scene.display,
                                               scene.vm.newString(u"C:\\image.png"));
                         }});
}

// Drawing with what has to be made for it.
void addDrawing(Rows* rows) {
    for (Kind known : {Kind::graphics, Kind::controlGraphics}) {
        Kind kind = known;
        std::string on = kind == Kind::graphics ? "on an image" : "on a control";
        auto dressed = [=](Scene& scene) {
            jint graphics = scene.the(kind);
            scene.tell(OS::Graphics_SetForeground, graphics, scene.the(Kind::color));
            scene.tell(OS::Graphics_SetBackground, graphics, scene.the(Kind::color));
            scene.tell(OS::Graphics_SetFont, graphics, scene.the(Kind::font));
            scene.tell(OS::Graphics_SetLineWidth, graphics, 3);
            scene.tell(OS::Graphics_SetClipping, graphics, 1, 1, 9, 9);
        };
        auto inXor = [=](Scene& scene) {
            scene.tell(OS::Graphics_SetXORMode, scene.the(kind), true);
        };
        for (const DeclaredNative& native : declaredNatives()) {
            std::string name = native.name;
            if (!name.starts_with("Graphics_Draw") && !name.starts_with("Graphics_Fill") &&
                !name.starts_with("Graphics_ClearClipping") && name != "Graphics_CopyArea")
                continue;
            rows->push_back(
                {.native = name, .state = "dressed " + on, .arrange = dressed, .kind = kind});
            rows->push_back(
                {.native = name, .state = "XOR mode " + on, .arrange = inXor, .kind = kind});
        }
    }
}

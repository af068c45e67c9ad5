// The natives of com.nuvik.wyx.k4tr.OS, the base layer.

#include "bridge/natives/native.h"
#include "control/adjustable.h"
#include "control/appearance.h"
#include "control/control.h"
#include "control/scrollable.h"
#include "control/shell.h"
#include "display/display.h"
#include "display/services.h"
#include "display/widget.h"
#include "graphics/color.h"
#include "graphics/cursor.h"
#include "graphics/device.h"
#include "graphics/drawing.h"
#include "graphics/font.h"
#include "graphics/graphics.h"
#include "image/image.h"
#include "menu/menu.h"
#include "menu/menu_item.h"
#include "sound/sound.h"
#include "widgets/button.h"
#include "widgets/choice.h"
#include "widgets/clipboard.h"
#include "widgets/file_dialog.h"
#include "widgets/label.h"
#include "widgets/list.h"
#include "widgets/scrollbar.h"
#include "widgets/text.h"

BASE_NATIVE(jint, Color, New, (jint device, jint red, jint green, jint blue),
            (device, red, green, blue))
BASE_NATIVE(void, Color, Dispose, (jint color), (color))

BASE_NATIVE(jintArray, Control, GetBounds, (jint control), (control))
BASE_NATIVE(void, Control, SetBounds, (jint control, jint x, jint y, jint width, jint height),
            (control, x, y, width, height))
BASE_NATIVE(void, Control, SetVisible, (jint control, jboolean visible), (control, visible))
BASE_NATIVE(jint, Control, NewGraphics, (jint control), (control))

BASE_NATIVE(void, Device, Dispose, (jint device), (device))
BASE_NATIVE(jintArray, Device, GetBounds, (jint device), (device))
BASE_NATIVE(jobjectArray, Device, GetTypefaces, (jint device, jboolean scalable),
            (device, scalable))

BASE_NATIVE(jint, Display, New, (), ())
BASE_NATIVE(jboolean, Display, ReadAndDispatch, (jint display), (display))
BASE_NATIVE(jint, Display, Sleep, (jint display), (display))
BASE_NATIVE(jint, Display, Wake, (jint display), (display))

extern "C" void JNICALL Java_com_nuvik_wyx_k4tr_OS_Display_1InitCallbacks(JNIEnv* env, jclass,
                                                                          jint display,
                                                                          jobject target) {
    Display_InitCallbacks(env, reinterpret_cast<DisplayRecord*>(display), target);
}

extern "C" void JNICALL Java_com_nuvik_wyx_k4tr_OS_Display_1RegisterCallback(JNIEnv* env, jclass,
                                                                             jint display, jint id,
                                                                             jstring className,
                                                                             jstring methodName) {
    Display_RegisterCallback(env, reinterpret_cast<DisplayRecord*>(display), id, className,
                             methodName);
}

BASE_NATIVE(jint, Font, New, (jint device, jstring name, jint points, jint style),
            (device, name, points, style))
BASE_NATIVE(void, Font, Dispose, (jint font), (font))
BASE_NATIVE(jint, Font, GetAscent, (jint font), (font))
BASE_NATIVE(jint, Font, GetDescent, (jint font), (font))
BASE_NATIVE(jint, Font, GetLeading, (jint font), (font))
BASE_NATIVE(jint, Font, GetSizeInPoints, (jint font), (font))
BASE_NATIVE(jint, Font, GetAdvanceWidth, (jint font, jchar character), (font, character))

BASE_NATIVE(void, Graphics, Dispose, (jint graphics), (graphics))
BASE_NATIVE(void, Graphics, SetForeground, (jint graphics, jint color), (graphics, color))
BASE_NATIVE(void, Graphics, SetBackground, (jint graphics, jint color), (graphics, color))
BASE_NATIVE(void, Graphics, SetLineWidth, (jint graphics, jint width), (graphics, width))
BASE_NATIVE(void, Graphics, SetFont, (jint graphics, jint font), (graphics, font))
BASE_NATIVE(void, Graphics, SetClipping, (jint graphics, jint x, jint y, jint width, jint height),
            (graphics, x, y, width, height))
BASE_NATIVE(void, Graphics, DrawLine, (jint graphics, jint x1, jint y1, jint x2, jint y2),
            (graphics, x1, y1, x2, y2))
BASE_NATIVE(void, Graphics, DrawRectangle, (jint graphics, jint x, jint y, jint width, jint height),
            (graphics, x, y, width, height))
BASE_NATIVE(void, Graphics, DrawRoundRectangle,
            (jint graphics, jint x, jint y, jint width, jint height, jint arcWidth, jint arcHeight),
            (graphics, x, y, width, height, arcWidth, arcHeight))
BASE_NATIVE(void, Graphics, DrawOval, (jint graphics, jint x, jint y, jint width, jint height),
            (graphics, x, y, width, height))
BASE_NATIVE(void, Graphics, DrawArc,
            (jint graphics, jint x, jint y, jint width, jint height, jint startAngle,
             jint arcAngle),
            (graphics, x, y, width, height, startAngle, arcAngle))
BASE_NATIVE(void, Graphics, DrawPolygon, (jint graphics, jintArray points, jint count),
            (graphics, points, count))
BASE_NATIVE(void, Graphics, DrawPolyline, (jint graphics, jintArray points, jint count),
            (graphics, points, count))
BASE_NATIVE(void, Graphics, DrawString, (jint graphics, jstring text, jint x, jint y, jint flags),
            (graphics, text, x, y, flags))
BASE_NATIVE(void, Graphics, FillRectangle, (jint graphics, jint x, jint y, jint width, jint height),
            (graphics, x, y, width, height))
BASE_NATIVE(void, Graphics, FillRoundRectangle,
            (jint graphics, jint x, jint y, jint width, jint height, jint arcWidth, jint arcHeight),
            (graphics, x, y, width, height, arcWidth, arcHeight))
BASE_NATIVE(void, Graphics, FillOval, (jint graphics, jint x, jint y, jint width, jint height),
            (graphics, x, y, width, height))
BASE_NATIVE(void, Graphics, FillArc,
            (jint graphics, jint x, jint y, jint width, jint height, jint startAngle,
             jint arcAngle),
            (graphics, x, y, width, height, startAngle, arcAngle))
BASE_NATIVE(void, Graphics, FillPolygon, (jint graphics, jintArray points, jint count),
            (graphics, points, count))
BASE_NATIVE(void, Graphics, DrawImage, (jint graphics, jint image, jint x, jint y),
            (graphics, image, x, y))

BASE_NATIVE(jint, Image, NewFromSize, (jint device, jint width, jint height, jint color),
            (device, width, height, color))
BASE_NATIVE(jint, Image, NewFromIntData,
            (jint device, jint width, jint height, jintArray pixels, jint depth,
             jint transparentColor, jint alpha, jbyteArray alphaData),
            (device, width, height, pixels, depth, transparentColor, alpha, alphaData))
BASE_NATIVE(jint, Image, NewFromByteData,
            (jint device, jint width, jint height, jbyteArray data, jint bytesPerLine, jint depth,
             jbyteArray reds, jbyteArray greens, jbyteArray blues, jint paletteSize,
             jint transparentIndex),
            (device, width, height, data, bytesPerLine, depth, reds, greens, blues, paletteSize,
             transparentIndex))
BASE_NATIVE(jint, Image, NewFromFileData, (jint device, jbyteArray data, jint length),
            (device, data, length))
BASE_NATIVE(jint, Image, NewGraphics, (jint image), (image))
BASE_NATIVE(void, Image, Dispose, (jint image), (image))
BASE_NATIVE(jintArray, Image, GetBounds, (jint image), (image))
BASE_NATIVE(jint, Image, GetDepth, (jint image), (image))
BASE_NATIVE(void, Image, GetRGB,
            (jint image, jint x, jint y, jint width, jint height, jint offset, jint scanSize,
             jintArray out),
            (image, x, y, width, height, offset, scanSize, out))

BASE_NATIVE(jintArray, Scrollable, GetInsets, (jint scrollable), (scrollable))

BASE_NATIVE(jint, Shell, New, (jint display, jint style), (display, style))
BASE_NATIVE(void, Shell, SetMaximized, (jint shell, jboolean maximized), (shell, maximized))
BASE_NATIVE(void, Shell, SetText, (jint shell, jstring text), (shell, text))

BASE_NATIVE(void, Widget, Dispose, (jint widget), (widget))

extern "C" void JNICALL Java_com_nuvik_wyx_k4tr_OS_Widget_1SetData(JNIEnv* env, jclass, jint widget,
                                                                   jobject data) {
    Widget_SetData(env, reinterpret_cast<WidgetRecord*>(widget), data);
}

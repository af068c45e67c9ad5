#include "bridge/native.h"
#include "graphics/drawing.h"

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
WIDGET_NATIVE(void, Graphics, ClearClipping, (jint graphics), (graphics))
WIDGET_NATIVE(void, Graphics, SetXORMode, (jint graphics, jboolean on), (graphics, on))
WIDGET_NATIVE(void, Graphics, SetLineNodeStyle,
              (jint graphics, jint first, jint second, jint third),
              (graphics, first, second, third))
WIDGET_NATIVE(void, Graphics, FillBackground,
              (jint graphics, jint color, jint x, jint y, jint width, jint height),
              (graphics, color, x, y, width, height))
WIDGET_NATIVE(void, Graphics, CopyArea,
              (jint graphics, jint sourceX, jint sourceY, jint width, jint height, jint targetX,
               jint targetY),
              (graphics, sourceX, sourceY, width, height, targetX, targetY))
WIDGET_NATIVE(void, Graphics, DrawImageRegion,
              (jint graphics, jint image, jint sourceX, jint sourceY, jint sourceWidth,
               jint sourceHeight, jint targetX, jint targetY, jint targetWidth, jint targetHeight),
              (graphics, image, sourceX, sourceY, sourceWidth, sourceHeight, targetX, targetY,
               targetWidth, targetHeight))

#include "image/image.h"
#include "bridge/native.h"
#include "graphics/graphics.h"

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
WIDGET_NATIVE(jint, Image, NewFromFile, (jint device, jstring path), (device, path))
WIDGET_NATIVE(jint, Image, NewFromHandle, (jint device, jint image), (device, image))
WIDGET_NATIVE(jint, Image, Flip,
              (jint image, jboolean horizontal, jboolean vertical, jint x, jint y, jint width,
               jint height),
              (image, horizontal, vertical, x, y, width, height))
WIDGET_NATIVE(jboolean, Image, IsDirect, (jint image), (image))
WIDGET_NATIVE(jint, Image, GetTransparentColor, (jint image), (image))
WIDGET_NATIVE(jintArray, Image, GetDirectPaletteMasks, (jint image), (image))
WIDGET_NATIVE(void, Image, GetIndexedPalette,
              (jint image, jbyteArray reds, jbyteArray greens, jbyteArray blues),
              (image, reds, greens, blues))
WIDGET_NATIVE(jintArray, Image, GetPixelsHighColor, (jint image), (image))
WIDGET_NATIVE(jbyteArray, Image, GetPixelsLowColor, (jint image), (image))
WIDGET_NATIVE(void, Image, SetRGB, (jint image, jint x, jint y, jint rgb), (image, x, y, rgb))

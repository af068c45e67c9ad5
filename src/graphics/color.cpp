#include "graphics/color.h"

HBRUSH Color_GetBrush(ColorRecord* color) {
    if (!color->brush) color->brush = CreateSolidBrush(color->color);
    return color->brush;
}

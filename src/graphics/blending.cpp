#include "graphics/blending.h"

static constexpr DWORD opaque = 255;
static constexpr DWORD colorBytes = 0x00FFFFFF;
static constexpr DWORD lanes = 0x00FF00FF; // two bytes of a pixel with room to multiply

// With t = alpha * source + (255 - alpha) * target, truncating toward the target is rounding t /
// 255 down where the source is not less and up where it is less: 254 is added before rounding down.
// The quotient of n by 255 is (n + 1 + (n >> 8)) >> 8 for all n up to 65534, which a lane holds.
static inline DWORD blendLanes(DWORD target, DWORD source, DWORD alpha) {
    constexpr DWORD borrow = 0x01000100;
    DWORD less = ~((source | borrow) - target) & borrow; // 256 in the lanes where it is
    DWORD sum = source * alpha + target * (opaque - alpha) + (less - (less >> 7));
    return ((sum + 0x00010001 + ((sum >> 8) & lanes)) >> 8) & lanes;
}

static inline DWORD blend(DWORD target, DWORD source) {
    DWORD alpha = source >> 24;
    if (alpha == 0) return target;
    if (alpha == opaque) return (source & colorBytes) | (target & ~colorBytes);
    // The target's own fourth byte beside the green: blended with itself it stays.
    DWORD high = (target >> 8) & lanes;
    DWORD sourceHigh = ((source >> 8) & 0xFF) | (high & ~0xFFu);
    return blendLanes(target & lanes, source & lanes, alpha) | blendLanes(high, sourceHigh, alpha)
                                                                   << 8;
}

DWORD blendPixel(DWORD target, DWORD source) { return blend(target, source); }

void blendRow(DWORD* target, const DWORD* source, LONG count) {
    for (LONG i = 0; i < count; ++i) target[i] = blend(target[i], source[i]);
}

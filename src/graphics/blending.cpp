#include "graphics/blending.h"
#include "bridge/lanes.h"

static constexpr DWORD opaque = 255;
static constexpr DWORD colorBytes = 0x00FFFFFF;
static constexpr DWORD redAndBlue = 0x00FF00FF; // two lanes, each with room to multiply
static constexpr DWORD green = 0x0000FF00;
static constexpr DWORD borrows = 0x01000100; // above the two lanes

// With t = alpha * source + (255 - alpha) * target, truncating toward the target is rounding t /
// 255 down where the source is not less and up where it is less: 254 is added before rounding down.
// The quotient of n by 255 is (m + (m >> 8)) >> 8 with m = n + 1 for all n up to 65534, which a
// lane holds.

static inline DWORD blendRedAndBlue(DWORD target, DWORD source, DWORD alpha, DWORD rest) {
    target &= redAndBlue;
    source &= redAndBlue;
    DWORD notLess = ((source | borrows) - target) & borrows; // 256 in the lanes where it is
    DWORD added = redAndBlue - (notLess - (notLess >> 7));   // 1, or 255
    DWORD sum = source * alpha + (target * rest + added);
    return (sum + (sum >> 8 & redAndBlue)) >> 8 & redAndBlue;
}

// Green stays where it is, with 8 bits below that do not matter.
static inline DWORD blendGreen(DWORD target, DWORD source, DWORD alpha, DWORD rest) {
    target &= green;
    source &= green;
    DWORD sum = source * alpha + (target * rest + (1 << 8));
    if (source < target) sum += 254 << 8;
    return ((sum + (sum >> 8)) & green << 8) >> 8;
}

static inline DWORD blend(DWORD target, DWORD source) {
    DWORD alpha = source >> 24;
    if (alpha == 0) return target;
    DWORD rest = opaque - alpha;
    if (rest == 0) return (source & colorBytes) | (target & ~colorBytes);
    return blendRedAndBlue(target, source, alpha, rest) | blendGreen(target, source, alpha, rest) |
           (target & ~colorBytes);
}

DWORD blendPixel(DWORD target, DWORD source) { return blend(target, source); }

#ifdef __SSE2__
using lanes::Bytes, lanes::Halves, lanes::Words;

// alpha * difference / 255, truncated.
static inline Halves shareOf(Words difference, Words alpha) {
    auto product = reinterpret_cast<Halves>(difference) * reinterpret_cast<Halves>(alpha);
    return lanes::upperProduct(product, 0x8081) >> 7; // exact for 16 bits
}

// The target's fourth byte lies beside green, and takes no share.
static inline Words blendFour(Words targets, Words sources) {
    auto target = reinterpret_cast<Bytes>(targets), source = reinterpret_cast<Bytes>(sources);
    Bytes more = lanes::excess(source, target);
    auto difference = reinterpret_cast<Words>(more | lanes::excess(target, source));
    Words alpha = sources >> 24;
    Halves others = shareOf(difference & redAndBlue, alpha | alpha << 16);
    Halves greens = shareOf(difference >> 8 & redAndBlue, alpha);
    auto share = reinterpret_cast<Bytes>(others | greens << 8);
    auto falls = reinterpret_cast<Bytes>(more == 0); // turned over, it rises
    return reinterpret_cast<Words>(((target ^ falls) + share) ^ falls);
}

static inline LONG blendFours(DWORD* target, const DWORD* source, LONG count) {
    LONG done = 0;
    for (; count - done >= 4; done += 4)
        lanes::store(target + done, blendFour(lanes::load<Words>(target + done),
                                              lanes::load<Words>(source + done)));
    return done;
}
#else
static inline LONG blendFours(DWORD*, const DWORD*, LONG) { return 0; }
#endif

void blendRow(DWORD* target, const DWORD* source, LONG count) {
    const DWORD* end = source + count;
    LONG done = blendFours(target, source, count);
    target += done;
    source += done;
    for (; source < end; ++target) *target = blend(*target, *source++);
}

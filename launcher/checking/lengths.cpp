#include "lengths.h"
#include <algorithm>
#include <string.h>

namespace {

// The numbers among the arguments, by their names, and which of them were asked for.
struct Numbers {
    const CheckedNative& native;
    const uint32_t* arguments;
    std::string asked;

    long long at(size_t index) {
        auto number = static_cast<int32_t>(arguments[index]);
        if (!asked.empty()) asked += ", ";
        asked += std::string(native.parameters[index].name) + " " + std::to_string(number);
        return number;
    }
    long long operator[](const char* name) {
        size_t index = 0;
        while (strcmp(native.parameters[index].name, name) != 0) ++index;
        return at(index);
    }
};

struct Range {
    long long first, end;
};

} // namespace

static Range ofPixels(Numbers& numbers) {
    long long width = numbers["width"], height = numbers["height"];
    if (width <= 0 || height <= 0) return {};
    return {0, width * height};
}

// The last row need not be as long as the others.
static Range ofRows(Numbers& numbers) {
    constexpr long long bitsOfByte = 8;
    long long width = numbers["width"], height = numbers["height"];
    long long length = numbers["bytesPerLine"], depth = numbers["depth"];
    if (width <= 0 || height <= 0 || length <= 0 || depth <= 0) return {};
    long long bytesOfPixels = (width * depth + bitsOfByte - 1) / bitsOfByte;
    return {0, (height - 1) * length + std::min(length, bytesOfPixels)};
}

static Range ofScannedRows(Numbers& numbers) {
    long long width = numbers["width"], height = numbers["height"];
    long long first = numbers["offset"], last = first + (height - 1) * numbers["scanSize"];
    if (width <= 0 || height <= 0) return {};
    return {std::min(first, last), std::max(first, last) + width};
}

static Range rangeOf(Numbers& numbers, const CheckedParameter& array) {
    switch (array.extent) {
    case Extent::counted:
        return {0, numbers.at(array.index)};
    case Extent::pixels:
        return ofPixels(numbers);
    case Extent::rows:
        return ofRows(numbers);
    case Extent::scannedRows:
        return ofScannedRows(numbers);
    case Extent::any:
        return {};
    }
    return {};
}

Elements elementsUsed(const CheckedNative& native, const uint32_t* arguments, size_t index) {
    Numbers numbers = {native, arguments, {}};
    Range range = rangeOf(numbers, native.parameters[index]);
    return {range.first, range.end, numbers.asked};
}

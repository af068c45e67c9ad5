#include "any_call.h"
#include <gtest/gtest.h>
#include <utility>

template <size_t... I>
static DWORD callWords(void* function, JNIEnv* env, const Words& words, std::index_sequence<I...>) {
    using Function = DWORD(__stdcall*)(JNIEnv*, void*, decltype(DWORD(I))...);
    return reinterpret_cast<Function>(function)(env, nullptr, words[I]...);
}

template <size_t Count>
static DWORD callCounted(void* function, JNIEnv* env, const Words& words) {
    constexpr size_t mostWords = 12;
    if constexpr (Count > mostWords) {
        ADD_FAILURE() << "more words than this passes";
        return 0;
    } else {
        if (words.size() == Count)
            return callWords(function, env, words, std::make_index_sequence<Count>());
        return callCounted<Count + 1>(function, env, words);
    }
}

DWORD callAny(void* function, JNIEnv* env, const Words& words) {
    return callCounted<0>(function, env, words);
}

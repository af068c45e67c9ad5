#pragma once
// Values narrower than a word, as another compiler's code hands them over.
//
// Ours takes the word to be extended already and drops a plain mask. The VM's and the system's code
// may leave anything above the value.

// The value by its own bits alone: a Java boolean or character, a SHORT or ATOM of the system.
template <class Narrow>
Narrow narrow(Narrow value) {
    static_assert(sizeof(Narrow) < sizeof(int));
    int word = value;
    __asm__("" : "+r"(word)); // from here on the word may hold anything
    return static_cast<Narrow>(word);
}

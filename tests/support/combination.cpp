#include "combination.h"
#include "fault_report.h"
#include <cstdlib>

static bool matches(const char* text, const char* pattern) {
    if (*pattern == '*') return matches(text, pattern + 1) || (*text && matches(text + 1, pattern));
    if (!*pattern || !*text) return *pattern == *text;
    return *pattern == *text && matches(text + 1, pattern + 1);
}

static const char* wanted() { return getenv("ZEMVOLT_COMBINATION"); }

bool Combination::isWanted(const std::string& name) {
    return !wanted() || matches(name.c_str(), wanted());
}

bool Combination::isChosen() { return wanted(); }

Combination::Combination(const std::string& running) : name(running) { sayWithFault(name.c_str()); }

Combination::~Combination() { sayWithFault(nullptr); }

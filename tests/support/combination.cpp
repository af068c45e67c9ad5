#include "combination.h"
#include "fault_report.h"
#include <atomic>
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

static std::atomic<const char*> innermost = nullptr;

static void setInnermost(const char* name) {
    innermost = name;
    sayWithFault(name);
}

const char* Combination::running() { return innermost; }

Combination::Combination(const std::string& given) : name(given), outer(innermost) {
    setInnermost(name.c_str());
}

Combination::~Combination() { setInnermost(outer); }

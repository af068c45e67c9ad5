#include "combination.h"
#include "fault_report.h"
#include <cstdlib>
#include <fstream>
#include <vector>

static bool matches(const char* text, const char* pattern) {
    if (*pattern == '*') return matches(text, pattern + 1) || (*text && matches(text + 1, pattern));
    if (!*pattern || !*text) return *pattern == *text;
    return *pattern == *text && matches(text + 1, pattern + 1);
}

static std::vector<std::string> readKnownFailures() {
    std::vector<std::string> patterns;
    std::ifstream file(KNOWN_FAILURES);
    for (std::string line; std::getline(file, line);)
        if (!line.empty() && line[0] != '#') patterns.push_back(line);
    return patterns;
}

static bool isKnownFailure(const std::string& name) {
    static const std::vector<std::string> patterns = readKnownFailures();
    for (const std::string& pattern : patterns)
        if (matches(name.c_str(), pattern.c_str())) return true;
    return false;
}

static const char* wanted() { return getenv("ZEMVOLT_COMBINATION"); }

// ZEMVOLT_AFTER leaves out all up to the one of that name, for who looks for the next failure.
static bool isPassed(const std::string& name) {
    static const char* after = getenv("ZEMVOLT_AFTER");
    if (after && name == after) {
        after = nullptr;
        return true;
    }
    return after;
}

bool Combination::isWanted(const std::string& name) {
    if (isPassed(name)) return false;
    return wanted() ? matches(name.c_str(), wanted()) : !isKnownFailure(name);
}

bool Combination::mayBeWanted(const std::string& beginning) {
    return wanted() || !isKnownFailure(beginning);
}

Combination::Combination(const std::string& running) : name(running) { sayWithFault(name.c_str()); }

Combination::~Combination() { sayWithFault(nullptr); }

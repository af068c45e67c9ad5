#include "outcomes.h"
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>

std::string blockOf(const std::string& native, const std::vector<StateOutcomes>& states) {
    std::vector<StateOutcomes> merged;
    for (const StateOutcomes& one : states) {
        auto same = std::find_if(merged.begin(), merged.end(),
                                 [&](const auto& other) { return other.lines == one.lines; });
        if (same == merged.end())
            merged.push_back(one);
        else
            same->state += ", " + one.state;
    }
    std::string block;
    for (const StateOutcomes& one : merged)
        block += native + (one.state.empty() ? "" : ": " + one.state) + "\n" + one.lines;
    return block;
}

static std::vector<std::string> keptLines() {
    std::ifstream file(OUTCOMES_FILE);
    EXPECT_TRUE(file.is_open()) << OUTCOMES_FILE;
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) lines.push_back(line);
    return lines;
}

static bool isHead(const std::string& line) { return !line.empty() && line[0] != ' '; }

std::string keptBlock(const std::string& native) {
    std::string block;
    bool isInside = false;
    for (const std::string& line : keptLines()) {
        if (isHead(line)) isInside = line == native || line.starts_with(native + ":");
        if (isInside) block += line + "\n";
    }
    return block;
}

static const char usually[] = "  usually";

std::vector<KeptOutcome> keptOutcomes() {
    std::vector<KeptOutcome> found;
    std::string native;
    for (const std::string& line : keptLines()) {
        if (isHead(line)) native = line.substr(0, line.find(':'));
        if (isHead(line) || line.starts_with(usually)) continue;
        std::string import;
        std::istringstream(line) >> import;
        found.push_back({native, import, line.substr(line.find(": ") + 2)});
    }
    return found;
}

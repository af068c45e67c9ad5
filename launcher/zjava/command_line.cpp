#include "command_line.h"

std::vector<std::string> wordsBehindProgram(char** words, int count) {
    const std::string program = "zjava.exe";
    int next = 0;
    while (next < count) {
        std::string word = words[next++];
        if (word.size() >= program.size() &&
            word.compare(word.size() - program.size(), program.size(), program) == 0)
            break;
    }
    return {words + next, words + count};
}

static bool isClassPathOption(const std::string& word) {
    return word == "-cp" || word == "-classpath" || word == "--class-path";
}

static const std::string companionOption = "-companion:";
static const std::string checkOption = "-check";
static const std::string reportOption = "-check:report";

std::string parse(const std::vector<std::string>& words, CommandLine* commandLine) {
    size_t next = 0;
    for (; next < words.size() && words[next][0] == '-'; ++next) {
        const std::string& word = words[next];
        bool wantsValue = isClassPathOption(word) || word == "-jar";
        if (wantsValue && next + 1 == words.size()) return word + " wants a value";
        if (isClassPathOption(word)) {
            commandLine->classPath = words[++next];
        } else if (word == "-jar") {
            commandLine->jarFile = words[++next];
            ++next;
            break;
        } else if (word.rfind(companionOption, 0) == 0) {
            size_t split = word.find('=');
            if (split == std::string::npos) return word + " wants FILE.dll=class/Name";
            size_t start = companionOption.size();
            commandLine->companions.push_back(
                {word.substr(start, split - start), word.substr(split + 1)});
        } else if (word == checkOption) {
            commandLine->checking = Checking::throws;
        } else if (word == reportOption) {
            commandLine->checking = Checking::reports;
        } else {
            commandLine->vmOptions.push_back(word);
        }
    }
    if (commandLine->jarFile.empty()) {
        if (next == words.size()) return "no class to run";
        commandLine->mainClass = words[next++];
    } else {
        if (!commandLine->classPath.empty()) commandLine->classPath += ":";
        commandLine->classPath += commandLine->jarFile;
    }
    commandLine->arguments.assign(words.begin() + next, words.end());
    return {};
}

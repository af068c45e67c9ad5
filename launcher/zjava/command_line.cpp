#include "command_line.h"
#include <stdio.h>

// Wine's own conversion of the command line would lose what its code page does not have.
std::vector<std::string> processArguments() {
    std::string raw;
    if (FILE* file = fopen("\\\\?\\unix\\proc\\self\\cmdline", "rb")) {
        char buffer[4096];
        for (size_t got; (got = fread(buffer, 1, sizeof(buffer), file)) > 0;)
            raw.append(buffer, got);
        fclose(file);
    }
    std::vector<std::string> words;
    for (size_t start = 0; start < raw.size();) {
        size_t end = raw.find('\0', start);
        words.push_back(raw.substr(start, end - start));
        start = end + 1;
    }
    // The loader's own words end with this program.
    for (size_t i = 0; i < words.size(); ++i) {
        if (words[i].size() < 9 || words[i].compare(words[i].size() - 9, 9, "zjava.exe"))
            continue;
        words.erase(words.begin(), words.begin() + i + 1);
        break;
    }
    return words;
}

static bool isClassPathOption(const std::string& word) {
    return word == "-cp" || word == "-classpath" || word == "--class-path";
}

std::string parse(const std::vector<std::string>& words, CommandLine* commandLine) {
    size_t next = 0;
    for (; next < words.size() && words[next][0] == '-'; ++next) {
        const std::string& word = words[next];
        bool wantsValue = isClassPathOption(word) || word == "-jar";
        if (wantsValue && next + 1 == words.size())
            return word + " wants a value";
        if (isClassPathOption(word)) {
            commandLine->classPath = words[++next];
        } else if (word == "-jar") {
            commandLine->jarFile = words[++next];
            ++next;
            break;
        } else {
            commandLine->vmOptions.push_back(word);
        }
    }
    if (commandLine->jarFile.empty()) {
        if (next == words.size())
            return "no class to run";
        commandLine->mainClass = words[next++];
    } else {
        commandLine->classPath = commandLine->jarFile;
    }
    commandLine->arguments.assign(words.begin() + next, words.end());
    return {};
}

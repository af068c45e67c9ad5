#pragma once
// The command line, with the options of the java command.

#include "checking.h"
#include "native_binding.h"
#include <string>
#include <vector>

struct CommandLine {
    std::vector<std::string> vmOptions; // as JNI_CreateJavaVM wants them
    std::vector<Companion> companions;  // -companion:FILE.dll=class/Name, beside java's options
    Checking checking = Checking::off;  // -check[:report]
    std::string classPath;              // the jar file behind what -cp names
    std::string mainClass;              // empty with a jar file
    std::string jarFile;
    std::vector<std::string> arguments;
};

// The words behind the program's name, exactly as they were given.
std::vector<std::string> wordsBehindProgram(char** words, int count);

// An empty string, or one line that says what is wrong.
std::string parse(const std::vector<std::string>& words, CommandLine* commandLine);

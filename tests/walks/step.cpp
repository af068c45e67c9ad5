#include "step.h"
#include "png.h"
#include "sound_files.h"
#include <fstream>
#include <gtest/gtest.h>
#include <iomanip>
#include <random>
#include <sstream>

using Type = Argument::Type;

static const struct {
    Type type;
    const char* word;
} madeOfSeed[] = {
    {Type::ints, "ints"}, {Type::bytes, "bytes"}, {Type::wave, "wave"}, {Type::image, "image"}};

static bool isPlain(char16_t character) {
    return character >= ' ' && character < 0x7F && character != '"' && character != '\\';
}

static void writeText(std::ostream& out, const std::u16string& text) {
    out << '"';
    for (char16_t character : text) {
        if (isPlain(character))
            out << static_cast<char>(character);
        else
            out << "\\u" << std::hex << std::setw(4) << std::setfill('0') << unsigned(character)
                << std::dec;
    }
    out << '"';
}

static void writeArgument(std::ostream& out, const Argument& argument) {
    for (const auto& known : madeOfSeed)
        if (argument.type == known.type)
            out << known.word << ' ' << argument.value << ' ' << argument.seed;
    if (argument.type == Type::number) out << argument.value;
    if (argument.type == Type::truth) out << (argument.value ? "true" : "false");
    if (argument.type == Type::object) out << '@' << argument.value;
    if (argument.type == Type::none) out << "null";
    if (argument.type == Type::listener) out << "listener";
    if (argument.type == Type::text) writeText(out, argument.text);
}

std::string toLine(const Step& step) {
    std::ostringstream out;
    out << step.number;
    if (!step.event.empty()) out << " in " << step.event;
    if (!step.failing.empty()) out << " failing " << step.failing << ' ' << step.nth;
    out << ": " << step.verb << '(';
    for (size_t i = 0; i < step.arguments.size(); ++i) {
        if (i) out << ", ";
        writeArgument(out, step.arguments[i]);
    }
    out << ')';
    return out.str();
}

// Behind the opening quotation mark, to behind the closing one.
static Argument readText(std::istream& in) {
    Argument argument = text({});
    for (char character; in.get(character) && character != '"';) {
        if (character != '\\') {
            argument.text += static_cast<char16_t>(character);
            continue;
        }
        char digits[6] = {};
        in.read(digits, 5);
        argument.text += static_cast<char16_t>(strtoul(digits + 1, nullptr, 16));
    }
    return argument;
}

static Argument readWord(std::istream& in) {
    std::string word;
    while (in && isalpha(in.peek())) word += static_cast<char>(in.get());
    if (word == "true" || word == "false") return truth(word == "true");
    if (word == "null") return none();
    if (word == "listener") return {.type = Type::listener};
    for (const auto& known : madeOfSeed) {
        if (word != known.word) continue;
        Argument argument = made(known.type, 0, 0);
        in >> argument.value >> argument.seed;
        return argument;
    }
    ADD_FAILURE() << "no argument: " << word;
    return none();
}

static Argument readArgument(std::istream& in) {
    int next = in.peek();
    if (isalpha(next)) return readWord(in);
    if (next == '"') return in.get(), readText(in);
    Argument argument;
    if (next == '@') {
        in.get();
        argument.type = Type::object;
    }
    in >> argument.value;
    return argument;
}

static void readHead(std::istream& in, Step* step) {
    std::string head;
    std::getline(in, head, ':');
    in.ignore(1);
    std::istringstream words(head);
    words >> step->number;
    for (std::string word; words >> word;) {
        if (word == "in") words >> step->event;
        if (word == "failing") words >> step->failing >> step->nth;
    }
}

Step toStep(const std::string& line) {
    std::istringstream in(line);
    Step step;
    readHead(in, &step);
    std::getline(in, step.verb, '(');
    while (in && in.peek() != ')') {
        if (in.peek() == ',') in.ignore(2);
        step.arguments.push_back(readArgument(in));
    }
    EXPECT_EQ(toLine(step), line) << "is no step";
    return step;
}

std::string pathOf(const std::string& path) { return path.starts_with('/') ? "Z:" + path : path; }

Steps readSteps(const std::string& path) {
    std::ifstream file(pathOf(path), std::ios::binary);
    EXPECT_TRUE(file) << path << " cannot be read";
    Steps steps;
    for (std::string line; std::getline(file, line);)
        if (!line.empty() && line[0] != '#') steps.push_back(toStep(line));
    return steps;
}

void writeSteps(const std::string& path, const Steps& steps) {
    std::ofstream file(pathOf(path), std::ios::binary);
    for (const Step& step : steps) file << toLine(step) << '\n';
}

std::vector<jint> intsOf(const Argument& argument) {
    std::mt19937 random(argument.seed);
    std::vector<jint> ints;
    for (jint i = 0; i < argument.value; ++i) ints.push_back(jint(random() % 12) - 3);
    return ints;
}

static FileBytes greyImage(jint edge) {
    constexpr uint8_t grey = 0x80;
    Png png = {};
    png.width = png.height = edge;
    png.bits = 8;
    png.rows.assign(size_t(edge) * edge, grey);
    return encode(png);
}

std::vector<jbyte> bytesOf(const Argument& argument) {
    std::mt19937 random(argument.seed);
    FileBytes bytes;
    if (argument.type == Type::wave)
        bytes = waveFile(waveFormat(WAVE_FORMAT_PCM, 1, 8000, 8), FileBytes(argument.value, 0x80));
    if (argument.type == Type::image) bytes = greyImage(argument.value);
    if (argument.type == Type::bytes)
        for (jint i = 0; i < argument.value; ++i) bytes.push_back(static_cast<uint8_t>(random()));
    return {bytes.begin(), bytes.end()};
}

// Sound files as the parser reads them, among bytes that it must not read.

#include "damage.h"
#include "guarded_bytes.h"
#include "sound/formats.h"
#include "sound_files.h"
#include <gtest/gtest.h>
#include <map>
#include <optional>
#include <random>

namespace {

constexpr uint16_t pcm = 1;
constexpr uint16_t aLaw = 6;
constexpr uint16_t muLaw = 7;
const FileBytes cdFormat = waveFormat(pcm, 2, 44100, 16);
const FileBytes fourBytes = {11, 22, 33, 44};

// What was found, with the samples told by their place in the file.
struct Found {
    LONG encoding, channels, sampleRate, bitsPerSample, size;
    int64_t place;
    bool operator==(const Found&) const = default;
};
void PrintTo(const Found& found, std::ostream* out) {
    *out << "{encoding " << found.encoding << ", " << found.channels << " channels, "
         << found.sampleRate << " Hz, " << found.bitsPerSample << " bits, " << found.size
         << " bytes at " << found.place << "}";
}

constexpr Found nothing = {-1, -1, -1, -1, -1, -1};

} // namespace

static Found parseAt(const BYTE* file, LONG length) {
    SoundSamples samples = {-1, -1, -1, -1, -1, file - 1};
    SoundStatus status = Sound_Parse(file, length, &samples);
    EXPECT_TRUE(status == soundDone || status == soundUnsupported) << status;
    Found found = {samples.encoding,      samples.channels,       samples.sampleRate,
                   samples.bitsPerSample, samples.sampleDataSize, samples.sampleData - file};
    EXPECT_EQ(status == soundUnsupported, found == nothing);
    return found;
}

// Parses the file twice: right before and right behind memory that must not be read.
static Found parse(const FileBytes& file) {
    GuardedBytes guarded(file.size());
    Found found = parseAt(guarded.copyToEnd(file.data(), file.size()), file.size());
    EXPECT_EQ(parseAt(guarded.copyToStart(file.data(), file.size()), file.size()), found);
    return found;
}

static FileBytes samplesOf(const FileBytes& file, const Found& found) {
    auto first = file.begin() + found.place;
    return {first, first + found.size};
}

TEST(WaveTest, tells_format_and_place_of_the_samples) {
    FileBytes file = waveFile(cdFormat, fourBytes);
    EXPECT_EQ(parse(file), (Found{1, 2, 44100, 16, 4, 44}));
}

TEST(WaveTest, knows_three_encodings) {
    EXPECT_EQ(parse(waveFile(waveFormat(pcm, 1, 8000, 8), fourBytes)),
              (Found{1, 1, 8000, 8, 4, 44}));
    EXPECT_EQ(parse(waveFile(waveFormat(muLaw, 1, 8000, 8), fourBytes)),
              (Found{2, 1, 8000, 8, 4, 44}));
    EXPECT_EQ(parse(waveFile(waveFormat(aLaw, 1, 8000, 8), fourBytes)),
              (Found{3, 1, 8000, 8, 4, 44}));
    for (uint16_t tag : {0, 2, 3, 4, 5, 8, 0x11, 0x55, 0x101, 0xFFFE, 0xFFFF})
        EXPECT_EQ(parse(waveFile(waveFormat(tag, 1, 8000, 8), fourBytes)), nothing) << tag;
}

TEST(WaveTest, reads_channels_and_bits_as_unsigned_words_and_the_rate_as_it_is) {
    FileBytes format =
        waveChunk("fmt ", littleWord(pcm) + littleWord(0xFFFE) + littleLong(0x89ABCDEF) +
                              littleLong(0) + littleWord(0) + littleWord(0x8001));
    EXPECT_EQ(parse(waveFile(format, fourBytes)),
              (Found{1, 0xFFFE, static_cast<LONG>(0x89ABCDEF), 0x8001, 4, 44}));
}

TEST(WaveTest, needs_13_bytes) {
    FileBytes file = waveFile({});
    EXPECT_EQ(file.size(), 12u);
    EXPECT_EQ(parse(file), nothing);
    EXPECT_EQ(parse(waveFile({0})), nothing) << "13 bytes are looked into";
}

TEST(WaveTest, is_as_long_as_its_header_says) {
    FileBytes file = waveFile(cdFormat, fourBytes);
    EXPECT_EQ(parse(file + FileBytes{0}), nothing);
    FileBytes shorter(file.begin(), file.end() - 1);
    EXPECT_EQ(parse(shorter), nothing);
    for (uint32_t size : {0u, 1u, 39u, 41u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFFu}) {
        FileBytes wrong = bytesOf("RIFF") + littleLong(size) + bytesOf("WAVE") + cdFormat +
                          waveChunk("data", fourBytes);
        EXPECT_EQ(parse(wrong), nothing) << size;
    }
}

TEST(WaveTest, names_itself_in_capitals) {
    FileBytes file = waveFile(cdFormat, fourBytes);
    for (size_t place : {0u, 3u, 8u, 11u}) {
        FileBytes wrong = file;
        wrong[place] ^= 0x20;
        EXPECT_EQ(parse(wrong), nothing) << place;
    }
}

TEST(WaveTest, has_a_format_and_data) {
    EXPECT_EQ(parse(waveFile(cdFormat)), nothing);
    EXPECT_EQ(parse(waveFile(waveChunk("data", fourBytes))), nothing);
    EXPECT_EQ(parse(waveFile(waveChunk("LIST", fourBytes))), nothing);
}

TEST(WaveTest, has_its_chunks_in_any_order) {
    EXPECT_EQ(parse(waveFile(waveChunk("data", fourBytes) + cdFormat)),
              (Found{1, 2, 44100, 16, 4, 20}));
    EXPECT_EQ(parse(waveFile(waveChunk("LIST", fourBytes) + waveChunk("data", fourBytes) +
                             waveChunk("fact", fourBytes) + cdFormat)),
              (Found{1, 2, 44100, 16, 4, 32}));
}

TEST(WaveTest, is_told_by_the_first_chunk_of_a_name) {
    EXPECT_EQ(parse(waveFile(cdFormat + waveFormat(muLaw, 1, 8000, 8) + waveChunk("data", {1, 2}) +
                             waveChunk("data", fourBytes))),
              (Found{1, 2, 44100, 16, 2, 68}));
}

TEST(WaveTest, may_have_a_longer_format) {
    FileBytes format =
        waveChunk("fmt ", littleWord(muLaw) + littleWord(1) + littleLong(8000) + littleLong(8000) +
                              littleWord(1) + littleWord(8) + littleWord(0));
    EXPECT_EQ(parse(waveFile(format, fourBytes)), (Found{2, 1, 8000, 8, 4, 46}));
}

TEST(WaveTest, is_refused_when_its_format_reaches_past_the_file) {
    FileBytes body(cdFormat.begin() + 8, cdFormat.end());
    for (size_t size : {0u, 4u, 14u, 15u}) {
        FileBytes cut(body.begin(), body.begin() + size);
        EXPECT_EQ(parse(waveFile(waveChunk("data", fourBytes) + waveChunk("fmt ", cut))), nothing)
            << size;
    }
}

TEST(WaveTest, has_its_format_in_16_bytes_that_may_go_past_the_size_of_its_chunk) {
    FileBytes body(cdFormat.begin() + 8, cdFormat.end());
    for (size_t size : {0u, 4u, 14u, 15u}) {
        FileBytes cut(body.begin(), body.begin() + size);
        // What follows the chunk is read as the rest of the format.
        FileBytes format = waveChunk("fmt ", cut) + waveChunk("data", fourBytes);
        EXPECT_EQ(parse(waveFile(format)) == nothing, size == 0) << size;
    }
    // At the file's end, 16 bytes and a size of nothing.
    FileBytes data = waveChunk("data", fourBytes);
    FileBytes format = waveChunk("fmt ", {}) + body;
    EXPECT_EQ(parse(waveFile(data + format)), parse(waveFile(data + cdFormat)));
}

TEST(WaveTest, loses_step_behind_an_odd_chunk_that_is_padded) {
    EXPECT_EQ(parse(waveFile(cdFormat + waveChunk("odd ", {1, 2, 3}) + FileBytes{0} +
                             waveChunk("data", fourBytes))),
              nothing);
    EXPECT_EQ(
        parse(waveFile(cdFormat + waveChunk("odd ", {1, 2, 3}) + waveChunk("data", fourBytes))),
        (Found{1, 2, 44100, 16, 4, 55}));
}

TEST(WaveTest, regains_step_when_the_walk_meets_a_name) {
    // The pad byte makes an id of "\0abc" and a size of 4.
    FileBytes strayed = FileBytes{0} + bytesOf("abc") + littleLong(4) + fourBytes;
    EXPECT_EQ(parse(waveFile(cdFormat + waveChunk("odd ", {1, 2, 3}) + strayed +
                             waveChunk("data", fourBytes))),
              (Found{1, 2, 44100, 16, 4, 67}));
}

TEST(WaveTest, may_be_padded_behind_odd_data) {
    EXPECT_EQ(parse(waveFile(cdFormat + waveChunk("data", {1, 2, 3}) + FileBytes{0})),
              (Found{1, 2, 44100, 16, 3, 44}));
}

TEST(WaveTest, may_have_no_samples) {
    EXPECT_EQ(parse(waveFile(cdFormat, {})), (Found{1, 2, 44100, 16, 0, 44}));
}

static FileBytes withSize(const std::string& id, uint32_t size) {
    return bytesOf(id) + littleLong(size) + fourBytes;
}

TEST(WaveTest, is_refused_when_a_chunk_is_larger_than_the_file_or_than_nothing) {
    for (uint32_t size : {5u, 6u, 0x7FFFFFFFu, 0x7FFFFFF8u, 0x80000000u, 0x80000008u, 0xFFFFFFECu,
                          0xFFFFFFF4u, 0xFFFFFFF8u, 0xFFFFFFFCu, 0xFFFFFFFFu}) {
        EXPECT_EQ(parse(waveFile(cdFormat + withSize("data", size))), nothing) << size;
        EXPECT_EQ(parse(waveFile(waveChunk("data", fourBytes) + withSize("LIST", size))), nothing)
            << size << ", on the way to the format";
        uint32_t formatSize = size + 16;
        if (formatSize <= 16) continue; // all of it is there
        FileBytes format = cdFormat;
        std::copy_n(littleLong(formatSize).begin(), 4, format.begin() + 4);
        EXPECT_EQ(parse(waveFile(waveChunk("data", {}) + format)), nothing) << size << ", format";
    }
}

TEST(WaveTest, ends_before_half_a_chunk) {
    for (size_t cut = 1; cut < 8; ++cut) {
        FileBytes half = bytesOf("data") + littleLong(0);
        half.resize(cut);
        EXPECT_EQ(parse(waveFile(cdFormat + half)), nothing) << cut;
    }
}

TEST(WaveTest, that_cannot_be_played_is_not_tried_as_another_kind) {
    FileBytes file = waveFile(waveFormat(3, 1, 8000, 32), fourBytes);
    EXPECT_EQ(parse(file), nothing);
}

TEST(SndTest, tells_format_and_place_of_the_samples) {
    EXPECT_EQ(parse(sndFile(3, 22050, 2, fourBytes)), (Found{1, 2, 22050, 16, 4, 28}));
}

TEST(SndTest, knows_five_encodings) {
    EXPECT_EQ(parse(sndFile(1, 8000, 1, fourBytes)), (Found{2, 1, 8000, 8, 4, 28}));
    EXPECT_EQ(parse(sndFile(2, 8000, 1, fourBytes)), (Found{1, 1, 8000, 8, 4, 28}));
    EXPECT_EQ(parse(sndFile(3, 8000, 1, fourBytes)), (Found{1, 1, 8000, 16, 4, 28}));
    EXPECT_EQ(parse(sndFile(4, 8000, 1, fourBytes)), (Found{1, 1, 8000, 24, 4, 28}));
    EXPECT_EQ(parse(sndFile(5, 8000, 1, fourBytes)), (Found{1, 1, 8000, 32, 4, 28}));
    for (uint32_t encoding :
         {0u, 6u, 7u, 23u, 27u, 0x01000000u, 0x7FFFFFFFu, 0x80000000u, 0x80000001u, 0xFFFFFFFFu})
        EXPECT_EQ(parse(sndFile(encoding, 8000, 1, fourBytes)), nothing) << encoding;
}

static FileBytes sndHeader(uint32_t offset, uint32_t size) {
    return bytesOf(".snd") + bigLong(offset) + bigLong(size) + bigLong(3) + bigLong(8000) +
           bigLong(1);
}

TEST(SndTest, needs_29_bytes) {
    FileBytes file = sndHeader(24, 4) + fourBytes;
    EXPECT_EQ(file.size(), 28u);
    EXPECT_EQ(parse(file), nothing);
    EXPECT_EQ(parse(sndHeader(24, 5) + fourBytes + FileBytes{55}), (Found{1, 1, 8000, 16, 5, 24}));
}

TEST(SndTest, is_as_long_as_its_header_says) {
    FileBytes file = sndFile(3, 8000, 1, fourBytes);
    EXPECT_EQ(parse(file + FileBytes{0}), nothing);
    EXPECT_EQ(parse(FileBytes(file.begin(), file.end() - 1)), nothing);
    EXPECT_EQ(parse(sndHeader(24, 0xFFFFFFFF) + fourBytes + fourBytes), nothing)
        << "a size that the writer did not know";
}

TEST(SndTest, has_its_samples_inside_the_file) {
    FileBytes rest = fourBytes + fourBytes; // 32 bytes in all
    EXPECT_EQ(parse(sndHeader(32, 0) + rest), (Found{1, 1, 8000, 16, 0, 32}));
    EXPECT_EQ(parse(sndHeader(0, 32) + rest), (Found{1, 1, 8000, 16, 32, 0}));
    EXPECT_EQ(parse(sndHeader(33, 0xFFFFFFFF) + rest), nothing);
    EXPECT_EQ(parse(sndHeader(0xFFFFFFFF, 33) + rest), nothing);
    EXPECT_EQ(parse(sndHeader(0x80000000, 0x80000020) + rest), nothing);
    EXPECT_EQ(parse(sndHeader(0x7FFFFFFF, 0x80000021) + rest), nothing);
    EXPECT_EQ(parse(sndHeader(0xFFFFFFF0, 0x30) + rest), nothing);
}

TEST(SndTest, is_big_endian) {
    EXPECT_EQ(parse(sndFile(3, 0x01020304, 0x81020304, fourBytes)),
              (Found{1, static_cast<LONG>(0x81020304), 0x01020304, 16, 4, 28}));
}

TEST(SoundFileTest, of_no_known_kind_is_unsupported) {
    EXPECT_EQ(parse(FileBytes(64)), nothing);
    EXPECT_EQ(parse(bytesOf("FORM") + FileBytes(64)), nothing);
    EXPECT_EQ(parse(bytesOf("RIFX") + FileBytes(64)), nothing);
    for (size_t length = 0; length < 29; ++length) {
        EXPECT_EQ(parse(bytesOf(std::string("RIFF....WAVEfmt data....WAVE").substr(0, length))),
                  nothing);
        EXPECT_EQ(parse(bytesOf(std::string(".snd................snd.data").substr(0, length))),
                  nothing);
    }
}

TEST(SoundFileTest, without_bytes_is_unsupported) {
    SoundSamples samples;
    EXPECT_EQ(Sound_Parse(nullptr, 0, &samples), soundUnsupported);
    for (LONG length : {-1L, -8L, LONG_MIN})
        EXPECT_EQ(Sound_Parse(nullptr, length, &samples), soundUnsupported) << length;
}

// Python's collection of sound files, with what its own readers say of them.
static const struct {
    const char* name;
    Found found;
} collection[] = {
    {"audiodata/pluck-pcm8.wav", {1, 2, 11025, 8, 6614, 142}},
    {"audiodata/pluck-pcm16.wav", {1, 2, 11025, 16, 13228, 142}},
    {"audiodata/pluck-pcm24.wav", {1, 2, 11025, 24, 19842, 142}},
    {"audiodata/pluck-pcm32.wav", {1, 2, 11025, 32, 26456, 142}},
    {"audiodata/pluck-pcm8.au", {1, 2, 11025, 8, 6614, 24}},
    {"audiodata/pluck-pcm16.au", {1, 2, 11025, 16, 13228, 24}},
    {"audiodata/pluck-pcm24.au", {1, 2, 11025, 24, 19842, 24}},
    {"audiodata/pluck-pcm32.au", {1, 2, 11025, 32, 26456, 24}},
    {"audiodata/pluck-ulaw.au", {2, 2, 11025, 8, 6614, 24}},
    {"audiotest.au", {2, 1, 8012, 8, 28110, 34}},
    {"sndhdrdata/sndhdr.wav", {1, 2, 44100, 16, 20, 44}},
    {"sndhdrdata/sndhdr.au", {1, 2, 44100, 16, 20, 44}},
};

TEST(CollectionTest, is_recognized_with_all_its_formats) {
    for (const auto& row : collection) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(parse(collectedFile(row.name)), row.found);
    }
}

TEST(CollectionTest, has_the_same_sound_in_both_kinds_of_file) {
    FileBytes wave = collectedFile("audiodata/pluck-pcm24.wav");
    FileBytes snd = collectedFile("audiodata/pluck-pcm24.au");
    FileBytes littleEndian = samplesOf(wave, parse(wave));
    FileBytes bigEndian = samplesOf(snd, parse(snd));
    for (size_t i = 0; i + 2 < bigEndian.size(); i += 3) std::swap(bigEndian[i], bigEndian[i + 2]);
    EXPECT_EQ(littleEndian, bigEndian);
}

TEST(CollectionTest, has_files_that_are_no_sounds_of_these_kinds) {
    for (const char* name :
         {"audiodata/pluck-pcm16.aiff", "audiodata/pluck-ulaw.aifc", "sndhdrdata/sndhdr.8svx",
          "sndhdrdata/sndhdr.hcom", "sndhdrdata/sndhdr.sndt", "sndhdrdata/sndhdr.voc"})
        EXPECT_EQ(parse(collectedFile(name)), nothing) << name;
}

namespace {

// The same rules once more, with numbers that cannot overflow and reads that are checked.
class Reader {
  public:
    explicit Reader(const FileBytes& bytes) : bytes(bytes) {}

    Found read() const {
        if (text(0) == "RIFF" && size() >= 13 && text(8) == "WAVE" && little(4) + 8 == size())
            return wave().value_or(nothing);
        return snd().value_or(nothing);
    }

  private:
    const FileBytes& bytes;

    int64_t size() const { return bytes.size(); }
    int64_t byte(int64_t at) const { return bytes.at(at); }
    std::string text(int64_t at) const {
        return at + 4 <= size() ? std::string(bytes.begin() + at, bytes.begin() + at + 4) : "";
    }
    int64_t word(int64_t at) const { return byte(at) + byte(at + 1) * 256; }
    int64_t little(int64_t at) const {
        return static_cast<int32_t>(word(at) + word(at + 2) * 65536);
    }
    int64_t big(int64_t at) const {
        return static_cast<int32_t>(byte(at) * 16777216 + byte(at + 1) * 65536 +
                                    byte(at + 2) * 256 + byte(at + 3));
    }
    std::optional<int64_t> chunk(const char* id) const {
        for (int64_t at = 12; at + 8 <= size(); at += 8 + little(at + 4)) {
            if (little(at + 4) < 0 || at + 8 + little(at + 4) > size()) return {};
            if (text(at) == id) return at;
        }
        return {};
    }
    std::optional<Found> wave() const {
        auto format = chunk("fmt ");
        auto data = chunk("data");
        if (!format || !data || *format + 8 + 16 > size()) return {};
        const std::map<int64_t, LONG> encodings = {{1, 1}, {7, 2}, {6, 3}};
        auto encoding = encodings.find(word(*format + 8));
        if (encoding == encodings.end()) return {};
        return Found{encoding->second,
                     static_cast<LONG>(word(*format + 10)),
                     static_cast<LONG>(little(*format + 12)),
                     static_cast<LONG>(word(*format + 22)),
                     static_cast<LONG>(little(*data + 4)),
                     *data + 8};
    }
    std::optional<Found> snd() const {
        if (size() < 29 || text(0) != ".snd") return {};
        int64_t offset = big(4), length = big(8), encoding = big(12);
        if (offset < 0 || length < 0 || offset + length != size()) return {};
        if (encoding < 1 || encoding > 5) return {};
        return Found{
            encoding == 1 ? 2 : 1,      static_cast<LONG>(big(20)),
            static_cast<LONG>(big(16)), encoding < 3 ? 8 : static_cast<LONG>(encoding - 1) * 8,
            static_cast<LONG>(length),  offset};
    }
};

// Damages files as broken writers and attackers do: in their sizes, ids, order and length.
class Mutator {
  public:
    FileBytes mutate(FileBytes file) {
        for (int i = 1 + pick(4); i > 0; --i) damage(file);
        if (pick(4)) fixLength(file);
        return file;
    }
    size_t pick(size_t count) { return random() % count; }

  private:
    std::mt19937 random{damageSeed(20040229)};

    void put(FileBytes& file, size_t at, const FileBytes& bytes) {
        for (size_t i = 0; i < bytes.size() && at + i < file.size(); ++i) file[at + i] = bytes[i];
    }
    uint32_t telling(size_t length) {
        const uint32_t edges[] = {0,
                                  0x7FFFFFFF,
                                  0x80000000,
                                  0xFFFFFFFF,
                                  static_cast<uint32_t>(length),
                                  static_cast<uint32_t>(-length)};
        return edges[pick(6)] + static_cast<uint32_t>(pick(65)) - 32;
    }
    void damage(FileBytes& file) {
        static const char* const names[] = {"RIFF", "WAVE", "fmt ", "data", ".snd", "LIST"};
        size_t place = pick(file.size() + 1);
        switch (pick(7)) {
        case 0:
            put(file, place, littleLong(telling(file.size())));
            break;
        case 1:
            put(file, place & ~3u, bigLong(telling(file.size())));
            break;
        case 2:
            put(file, place, {static_cast<uint8_t>(random())});
            break;
        case 3:
            put(file, place, bytesOf(names[pick(6)]));
            break;
        case 4:
            file.resize(place);
            break;
        case 5:
            file = file + FileBytes(file.begin(), file.begin() + place % 64);
            break;
        case 6:
            put(file, pick(file.size() + 1), FileBytes(file.begin() + place, file.end()));
            break;
        }
    }
    // Makes the header agree with the length, so that what lies behind it is looked at too.
    void fixLength(FileBytes& file) {
        if (file.size() < 12) return;
        if (file[0] == 'R') put(file, 4, littleLong(file.size() - 8));
        if (file[0] != '.') return;
        uint32_t offset = file[4] << 24 | file[5] << 16 | file[6] << 8 | file[7];
        put(file, 8, bigLong(file.size() - offset));
    }
};

} // namespace

// Whole small files, and large ones with most of their samples taken out.
static std::vector<FileBytes> seeds() {
    std::vector<FileBytes> files = {
        waveFile(waveChunk("LIST", fourBytes) + waveChunk("data", countingBytes(40)) + cdFormat),
        waveFile(cdFormat + waveChunk("odd ", {1, 2, 3}) + waveChunk("data", fourBytes)),
        sndFile(3, 8000, 1, fourBytes)};
    for (const auto& row : collection) {
        FileBytes file = collectedFile(row.name);
        size_t kept = row.found.place + 32;
        if (file.size() < kept) return files;
        file.resize(kept);
        if (file[0] == 'R') {
            std::copy_n(littleLong(kept - 8).begin(), 4, file.begin() + 4);
            std::copy_n(littleLong(32).begin(), 4, file.begin() + row.found.place - 4);
        } else {
            std::copy_n(bigLong(32).begin(), 4, file.begin() + 8);
        }
        files.push_back(file);
    }
    return files;
}

TEST(MutationTest, damaged_files_are_read_as_far_as_they_go) {
    const int rounds = damagedFiles(1000000);
    const std::vector<FileBytes> files = seeds();
    for (const FileBytes& file : files) ASSERT_NE(parse(file), nothing);
    GuardedBytes guarded(4096);
    Mutator mutator;
    int recognized = 0, refused = 0, different = 0;
    for (int i = 0; i < rounds; ++i) {
        FileBytes file = mutator.mutate(files[mutator.pick(files.size())]);
        BYTE* place = i & 1 ? guarded.copyToStart(file.data(), file.size())
                            : guarded.copyToEnd(file.data(), file.size());
        Found found = parseAt(place, file.size());
        Found expected = Reader(file).read();
        if (found != expected && ++different < 10)
            ADD_FAILURE() << "round " << i << ": " << testing::PrintToString(found) << ", not "
                          << testing::PrintToString(expected);
        ++(found == nothing ? refused : recognized);
    }
    EXPECT_EQ(different, 0);
    // Neither answer is the usual one: the damage is not too small and not too great.
    EXPECT_GT(recognized, rounds / 10);
    EXPECT_GT(refused, rounds / 10);
}

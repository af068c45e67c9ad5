// Real images against another decoder's pixels, and damaged ones.

#include "damage.h"
#include "decoding_fixture.h"
#include "fault_report.h"
#include "faults.h"
#include "leaks.h"
#include <sstream>
#include <thread>

static std::vector<std::string> hostileImages() {
    std::ifstream list(SUITE_FOLDER "/hostile.txt");
    std::vector<std::string> names{std::istream_iterator<std::string>(list), {}};
    EXPECT_GT(names.size(), 40u);
    return names;
}

// How the pixels differ; empty when they do not, or not more on average than they may.
static std::string difference(const Bytes& ours, const Bytes& others, const Known& known,
                              bool withAlpha) {
    if (ours.size() != others.size()) return "sizes differ";
    long long sum = 0;
    size_t count = 0, first = 0;
    for (size_t i = 0; i < ours.size(); ++i) {
        if (i % 4 == 3 && !withAlpha) continue;
        int apart = std::abs(static_cast<BYTE>(ours[i]) - static_cast<BYTE>(others[i]));
        if (apart && count++ == 0) first = i;
        sum += apart;
    }
    if (sum <= known.tolerance * static_cast<long long>(ours.size())) return {};
    std::ostringstream said;
    said << count << " components differ by " << sum << " together, first component " << first % 4
         << " of " << first / 4 % known.width << ", " << first / 4 / known.width << ": "
         << static_cast<int>(static_cast<BYTE>(ours[first])) << " and "
         << static_cast<int>(static_cast<BYTE>(others[first]));
    return said.str();
}

TEST_F(DecodingTest, suite_is_decoded_as_by_another_decoder) {
    for (const Known& known : suite()) {
        jint image = fromData(readFile(known.name));
        if (!image) {
            ADD_FAILURE() << known.name << " is not decoded";
            vm.reports.clear();
            continue;
        }
        EXPECT_EQ(boundsOf(image), (Ints{0, 0, known.width, known.height})) << known.name;
        if (known.depth) {
            EXPECT_EQ(depthOf(image), known.depth) << known.name;
        }
        EXPECT_EQ(isDirect(image), depthOf(image) > 8) << known.name;
        EXPECT_EQ(transparencyOf(image), known.transparent) << known.name;
        EXPECT_EQ(
            difference(componentsOf(image), readFile(known.name + ".rgba"), known, isDirect(image)),
            "")
            << known.name;
        disposeImage(image);
    }
}

TEST_F(DecodingTest, every_way_of_delivery_gives_the_same_image) {
    for (const Known& known : suite()) {
        const Bytes data = readFile(known.name);
        Emulator_SetImageDelivery(deliverWhole);
        jint whole = fromData(data);
        if (!whole) continue; // which the test of the suite complains of
        for (EmulatorDelivery delivery : {deliverInBands, deliverRows, deliverPasses}) {
            Emulator_SetImageDelivery(delivery);
            jint image = fromData(data);
            ASSERT_NE(image, 0) << known.name;
            EXPECT_EQ(depthOf(image), depthOf(whole)) << known.name;
            EXPECT_EQ(componentsOf(image), componentsOf(whole)) << known.name << ", " << delivery;
            EXPECT_EQ(transparencyOf(image), transparencyOf(whole)) << known.name;
            disposeImage(image);
        }
        disposeImage(whole);
    }
}

TEST_F(DecodingTest, file_gives_the_image_of_its_contents) {
    int count = 0;
    for (const Known& known : suite()) {
        if (++count % 10) continue;
        const std::string path = SUITE_FOLDER "/" + known.name;
        jint file = fromFile({path.begin(), path.end()});
        ASSERT_NE(file, 0) << path;
        jint data = fromData(readFile(known.name));
        EXPECT_EQ(storedIn(file), storedIn(data)) << path;
        disposeImage(file);
        disposeImage(data);
    }
    EXPECT_GT(count, 100);
}

// What is damaged gives an image all the same, or one report that says so.
class DamageTest : public DecodingTest {
  protected:
    ~DamageTest() override { sayWithFault(nullptr); }

    // One of many: tells in a fault which it was.
    void decodeNext(const Bytes& data, const std::string& name) {
        said = name + ", damaged file " + std::to_string(images + errors);
        sayWithFault(said.c_str());
        decode(data, name);
        vm.calls.clear();
    }

    void decode(const Bytes& data, const std::string& name) {
        jint image = fromData(data);
        if (image) {
            ++images;
            EXPECT_TRUE(vm.reports.empty()) << name;
            EXPECT_GT(pixelsOf(image).width, 0) << name;
            disposeImage(image);
            return;
        }
        ++errors;
        TestVm::Report report = onlyReport();
        bool known = report.code == -6 ? report.message == noDecoder
                                       : report.code == -8 && report.message == notDecoded;
        EXPECT_TRUE(known) << name << ", " << report.code;
    }

    // Small images of every format, so that thousands are decoded soon.
    std::vector<std::pair<std::string, Bytes>> smallImages() {
        constexpr size_t small = 6000;
        std::vector<std::pair<std::string, Bytes>> found;
        for (const Known& known : suite()) {
            Bytes data = readFile(known.name);
            if (data.size() <= small) found.push_back({known.name, data});
        }
        EXPECT_GT(found.size(), 100u);
        return found;
    }
    size_t below(size_t end) { return random() % end; }

    const int files = damagedFiles(3000);
    int images = 0, errors = 0;

  private:
    std::string said;
};

TEST_F(DamageTest, images_made_to_break_decoders) {
    newShell();
    NoLeaks noLeaks;
    for (const std::string& name : hostileImages()) decode(readFile(name), name);
    EXPECT_GT(errors, 10);
}

TEST_F(DamageTest, truncated_images) {
    const auto all = smallImages();
    newShell();
    NoLeaks noLeaks;
    random.seed(damageSeed(1));
    for (int i = 0; i < files; ++i) {
        const auto& [name, data] = all[below(all.size())];
        decodeNext({data.begin(), data.begin() + below(data.size())}, name);
    }
    EXPECT_GT(errors, files / 6);
    RecordProperty("images", images);
}

TEST_F(DamageTest, corrupted_images) {
    const auto all = smallImages();
    newShell();
    NoLeaks noLeaks;
    random.seed(damageSeed(2));
    for (int i = 0; i < files; ++i) {
        auto [name, data] = all[below(all.size())];
        for (size_t changes = below(8) + 1; changes > 0; --changes)
            data[below(data.size())] = static_cast<jbyte>(random());
        decodeNext(data, name);
    }
    EXPECT_GT(errors, files / 30);
    EXPECT_GT(images, files / 30);
}

TEST_F(DecodingTest, entry_without_opacity_is_the_transparent_one) {
    Png png = {3, 1, 8, 3, {0, 1, 2}, {1, 2, 3, 4, 5, 6, 7, 8, 9}, {255, 0, 255}};
    jint image = fromData(bytesOf(png));
    EXPECT_FALSE(isDirect(image));
    EXPECT_EQ(transparencyOf(image), 1);
    EXPECT_EQ(recordOf(image)->transparentColor, RGB(4, 5, 6));
    EXPECT_EQ(paletteOf(image, 3),
              (std::vector<COLORREF>{RGB(1, 2, 3), RGB(4, 5, 6), RGB(7, 8, 9)}));
    disposeImage(image);
}

TEST_F(DecodingTest, last_of_several_entries_without_opacity_counts) {
    Png png = {3, 1, 8, 3, {0, 1, 2}, {1, 2, 3, 4, 5, 6, 7, 8, 9}, {0, 0, 128}};
    jint image = fromData(bytesOf(png));
    EXPECT_EQ(transparencyOf(image), 1);
    disposeImage(image);
}

TEST_F(DecodingTest, palette_of_opaque_colors_has_no_transparency) {
    jint image = fromData(bytesOf({2, 1, 8, 3, {0, 1}, {1, 2, 3, 4, 5, 6}, {}}));
    EXPECT_EQ(transparencyOf(image), -1);
    EXPECT_EQ(recordOf(image)->transparentIndex, 255u);
    disposeImage(image);
}

TEST_F(DecodingTest, indexed_images_keep_their_indices_at_every_depth_and_width) {
    for (jint bits : {1, 2, 4, 8})
        for (jint width = 1; width <= 17; ++width) {
            size_t length = (width * bits + 7) / 8;
            Bytes rows = randomBytes(length * 2);
            std::vector<uint8_t> palette((1 << bits) * 3);
            for (uint8_t& component : palette) component = static_cast<uint8_t>(random());
            jint image = fromData(bytesOf({static_cast<uint32_t>(width),
                                           2,
                                           static_cast<uint8_t>(bits),
                                           3,
                                           {rows.begin(), rows.end()},
                                           palette,
                                           {}}));
            ASSERT_NE(image, 0);
            EXPECT_EQ(depthOf(image), bits == 2 ? 4 : bits);
            const Bytes components = componentsOf(image);
            for (jint i = 0; i < width * 2; ++i) {
                jint x = i % width;
                BYTE byte = static_cast<BYTE>(rows[i / width * length + x * bits / 8]);
                int index = byte >> (8 - bits - x * bits % 8) & ((1 << bits) - 1);
                for (int component = 0; component < 3; ++component)
                    ASSERT_EQ(static_cast<BYTE>(components[i * 4 + component]),
                              palette[index * 3 + component])
                        << bits << " bits, " << width << " wide";
            }
            disposeImage(image);
        }
}

TEST_F(DecodingTest, more_than_8_bits_a_component_or_alpha_gives_32_bits) {
    const Png images[] = {
        {1, 1, 16, 0, {0x12, 0x34}, {}, {}},
        {1, 1, 16, 2, {0x12, 0, 0x34, 0, 0x56, 0}, {}, {}},
        {1, 1, 8, 6, {0x12, 0x34, 0x56, 0x78}, {}, {}},
        {1, 1, 8, 4, {0x12, 0x78}, {}, {}},
        {1, 1, 16, 6, {0x12, 0, 0x34, 0, 0x56, 0, 0x78, 0}, {}, {}},
    };
    const jint expected[] = {jint(0xFF121212), jint(0xFF123456), 0x78123456, 0x78121212,
                             0x78123456};
    for (size_t i = 0; i < std::size(images); ++i) {
        jint image = fromData(bytesOf(images[i]));
        EXPECT_EQ(depthOf(image), 32);
        EXPECT_TRUE(isDirect(image));
        EXPECT_EQ(highColorOf(image), (Ints{expected[i]})) << i;
        disposeImage(image);
    }
}

// A bitmap file with 16 bits a pixel: 5-5-5.
TEST_F(DecodingTest, source_of_16_bits_gives_32) {
    const Bytes data = {'B', 'M', 58, 0, 0, 0, 0, 0, 0,  0, 54, 0, 0, 0, 40,   0,    0, 0, 1, 0,
                        0,   0,   1,  0, 0, 0, 1, 0, 16, 0, 0,  0, 0, 0, 4,    0,    0, 0, 0, 0,
                        0,   0,   0,  0, 0, 0, 0, 0, 0,  0, 0,  0, 0, 0, 0x1F, 0x7C, 0, 0};
    jint image = fromData(data);
    ASSERT_NE(image, 0);
    EXPECT_EQ(depthOf(image), 32);
    EXPECT_EQ(highColorOf(image), (Ints{jint(0xFFFF00FF)}));
    disposeImage(image);
}

TEST_F(DecodingTest, only_so_many_bytes_are_looked_at) {
    Bytes data = bytesOf(onePixel);
    jint length = static_cast<jint>(data.size());
    data.resize(length + 100, 0x7F);
    for (jint given : {length, length + 100}) {
        jint image = fromData(data, given);
        EXPECT_EQ(highColorOf(image), (Ints{0x123456}));
        disposeImage(image);
    }
    data.resize(length);
    for (jint given : {length + 1, jint(INT_MAX)}) {
        jint image = fromData(data, given);
        EXPECT_EQ(highColorOf(image), (Ints{0x123456})) << "no more than there is";
        disposeImage(image);
    }
    for (jint given : {0, 7, -1, INT_MIN}) {
        EXPECT_EQ(fromData(data, given), 0);
        expectReport("Image_NewFromFileData", -6, noDecoder);
    }
}

TEST_F(DecodingTest, decodes_leave_nothing_behind) {
    const Bytes images[] = {bytesOf(onePixel), bytesOf({1, 1, 8, 3, {0}, {1, 2, 3}, {0}}),
                            Bytes(40, 'x'), bytesOf({1, 1, 16, 0, {0x12, 0x34}, {}, {}})};
    jbyteArray arrays[] = {vm.newBytes(images[0]), vm.newBytes(images[1]), vm.newBytes(images[2]),
                           vm.newBytes(images[3])};
    newShell();
    disposeImage(fromData(images[0]));
    NoLeaks noLeaks;
    Faults faults;
    int decoded = 0;
    for (int i = 0; i < leakRounds(); ++i) {
        jint image =
            call(OS::Image_NewFromFileData, display, arrays[i % 4], jint(images[i % 4].size()));
        EXPECT_EQ(image == 0, i % 4 == 2);
        decoded += image != 0;
        if (image) disposeImage(image);
        vm.reports.clear();
        vm.calls.clear();
    }
    EXPECT_EQ(faults.countCalls("DeleteCriticalSection"), decoded);
    EXPECT_EQ(faults.countCalls("InitializeCriticalSection"), decoded);
    EXPECT_EQ(faults.countCalls("CoInitializeEx"), faults.countCalls("CoUninitialize"));
}

// The library's own code in this program: its natives belong to the VM's threads.
TEST_F(DecodingTest, threads_decode_side_by_side) {
    Bytes data = readFile(suite()[0].name);
    ByteArguments arguments = {data.data(), static_cast<jint>(data.size())};
    jint expected = fromData(data);
    const Bytes pixels = storedIn(expected);
    std::vector<std::thread> threads;
    std::vector<int> equal(4);
    for (int& count : equal)
        threads.emplace_back([&] {
            for (int i = 0; i < 50; ++i) {
                ErrorRecord error = {};
                ImageRecord* image =
                    Image_NewFromFileData(nullptr, arguments, arguments.count, &error);
                if (!image) continue;
                count += storedIn(reinterpret_cast<jint>(image)) == pixels;
                Image_Dispose(image, &error);
            }
        });
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(equal, std::vector<int>(4, 50));
    disposeImage(expected);
}

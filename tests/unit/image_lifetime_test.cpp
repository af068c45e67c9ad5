// Images, their graphics contexts and the threads that use them, disposed of in any order.

#include "faults.h"
#include "graphics/graphics.h"
#include "image_fixture.h"
#include "leaks.h"
#include <thread>

class ImageLifetimeTest : public ImageFixture {
  protected:
    jint onImage(jint image) { return call(OS::Image_NewGraphics, image); }
    void end(jint graphics) { call(OS::Graphics_Dispose, graphics); }
    void fill(jint graphics, jint x = 0, jint y = 0) {
        call(OS::Graphics_FillRectangle, graphics, x, y, 1, 1);
    }
    void drawImage(jint graphics, jint image) {
        call(OS::Graphics_DrawImage, graphics, image, 0, 0);
    }
    void drawRegion(jint graphics, jint image) {
        call(OS::Graphics_DrawImageRegion, graphics, image, 0, 0, 1, 1, 0, 0, 2, 2);
    }
    static HDC contextOf(jint graphics) { return reinterpret_cast<GraphicsRecord*>(graphics)->dc; }
};

TEST_F(ImageLifetimeTest, contexts_may_end_after_their_image) {
    newShell();
    for (bool drawsBefore : {false, true})
        for (bool drawsAfter : {false, true})
            for (bool firstFirst : {false, true}) {
                NoLeaks noLeaks;
                jint image = newImage(8, 6, 0xFFFFFF);
                jint first = onImage(image);
                jint second = onImage(image);
                if (drawsBefore) fill(first);
                if (drawsBefore) fill(second);
                disposeImage(image);
                if (drawsAfter) fill(first);
                if (drawsAfter) fill(second);
                end(firstFirst ? first : second);
                if (drawsAfter) fill(firstFirst ? second : first);
                end(firstFirst ? second : first);
            }
    EXPECT_TRUE(vm.reports.empty());
}

static std::vector<HDC> contexts;
static int deletedWhileSelected;
static BOOL WINAPI watchDeletion(HGDIOBJ object) {
    for (HDC dc : contexts) deletedWhileSelected += GetCurrentObject(dc, OBJ_BITMAP) == object;
    return DeleteObject(object);
}

// The device would never free it.
TEST_F(ImageLifetimeTest, a_bitmap_is_not_deleted_while_a_context_holds_it) {
    jint image = newImage(8, 6, 0xFFFFFF);
    jint graphics = onImage(image);
    fill(graphics);
    contexts = {contextOf(graphics)};
    deletedWhileSelected = 0;
    HBITMAP bitmap = recordOf(image)->bitmap;
    Faults faults;
    faults.replace("DeleteObject", reinterpret_cast<void*>(watchDeletion));
    disposeImage(image);
    end(graphics);
    EXPECT_EQ(deletedWhileSelected, 0);
    BITMAP description;
    EXPECT_EQ(GetObjectW(bitmap, sizeof(description), &description), 0) << "it is deleted";
}

TEST_F(ImageLifetimeTest, an_image_ends_on_another_thread_than_its_contexts_draw_on) {
    newShell();
    NoLeaks noLeaks;
    for (int i = 0; i < 200; ++i) {
        jint image = newImage(8, 6, 0xFFFFFF);
        jint graphics = onImage(image);
        std::thread other([&] { disposeImage(image); });
        for (int j = 0; j < 20; ++j) fill(graphics);
        other.join();
        fill(graphics);
        end(graphics);
    }
}

// What another thread does in the middle of a drawing.
static std::function<void()> meanwhile;
static BOOL WINAPI blitMeanwhile(HDC target, int x, int y, int width, int height, HDC source,
                                 int sourceX, int sourceY, DWORD operation) {
    if (std::function<void()> work = std::exchange(meanwhile, nullptr)) {
        std::thread other(work);
        other.join();
    }
    return BitBlt(target, x, y, width, height, source, sourceX, sourceY, operation);
}

TEST_F(ImageLifetimeTest, an_image_that_is_being_drawn_ends_afterwards) {
    jint target = newImage(8, 6, 0xFFFFFF);
    jint graphics = onImage(target);
    drawImage(graphics, target);
    {
        NoLeaks noLeaks;
        jint image = newImage(2, 2, 0x112233);
        HBITMAP bitmap = recordOf(image)->bitmap;
        Faults faults;
        faults.replace("BitBlt", reinterpret_cast<void*>(blitMeanwhile));
        meanwhile = [&] { disposeImage(image); };
        drawImage(graphics, image);
        EXPECT_EQ(pixelsOf(target).bits[0], 0x33) << "it is drawn";
        BITMAP description;
        EXPECT_EQ(GetObjectW(bitmap, sizeof(description), &description), 0) << "it is deleted";
    }
    end(graphics);
    disposeImage(target);
}

TEST_F(ImageLifetimeTest, threads_draw_images_into_each_other) {
    jint images[] = {newImage(2, 2, 0xFF0000), newImage(2, 2, 0x0000FF)};
    jint graphics[] = {onImage(images[0]), onImage(images[1])};
    constexpr int rounds = 3000;
    auto draw = [&](int into) {
        for (int i = 0; i < rounds; ++i) {
            drawImage(graphics[into], images[1 - into]);
            drawRegion(graphics[into], images[1 - into]);
        }
    };
    std::thread other(draw, 1);
    draw(0);
    other.join();
    EXPECT_EQ(colorAt(images[0], 0, 0), colorAt(images[1], 0, 0)) << "the colour of one of them";
    for (int i : {0, 1}) end(graphics[i]);
    for (int i : {0, 1}) disposeImage(images[i]);
}

static std::vector<CRITICAL_SECTION*> entered;
static void WINAPI recordEntry(CRITICAL_SECTION* lock) {
    entered.push_back(lock);
    EnterCriticalSection(lock);
}

TEST_F(ImageLifetimeTest, the_locks_of_two_images_are_entered_in_one_order) {
    jint images[] = {newImage(2, 2, 0xFF0000), newImage(2, 2, 0x0000FF)};
    jint graphics[] = {onImage(images[0]), onImage(images[1])};
    CRITICAL_SECTION* locks[] = {&recordOf(images[0])->lock, &recordOf(images[1])->lock};
    Faults faults;
    faults.replace("EnterCriticalSection", reinterpret_cast<void*>(recordEntry));
    CRITICAL_SECTION* firsts[2][2];
    for (int into : {0, 1})
        for (bool region : {false, true}) {
            entered.clear();
            if (region)
                drawRegion(graphics[into], images[1 - into]);
            else
                drawImage(graphics[into], images[1 - into]);
            auto first = std::find_first_of(entered.begin(), entered.end(), locks, locks + 2);
            ASSERT_NE(first, entered.end());
            firsts[into][region] = *first;
        }
    EXPECT_EQ(firsts[0][0], firsts[1][0]);
    EXPECT_EQ(firsts[0][1], firsts[1][1]);
    for (int i : {0, 1}) end(graphics[i]);
    for (int i : {0, 1}) disposeImage(images[i]);
}

TEST_F(ImageLifetimeTest, an_image_gets_no_context_without_the_systems) {
    jint image = newImage(2, 2, 0);
    {
        NoLeaks noLeaks;
        Faults faults;
        faults.fail("CreateCompatibleDC", 1, ERROR_NOT_ENOUGH_MEMORY);
        EXPECT_EQ(onImage(image), 0);
        expectReport("Image_NewGraphics", -4,
                     u"Unable to allocate enough memory for device context::");
    }
    jint graphics = onImage(image);
    fill(graphics);
    end(graphics);
    disposeImage(image);
}

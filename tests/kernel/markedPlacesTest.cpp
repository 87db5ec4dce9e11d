#include "kernel/markedPlaces.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace {

std::vector<std::size_t> marked(const cMarkedPlaces& places) {
    std::vector<std::size_t> found;
    for (std::size_t i = places.next(0); i < places.size(); i = places.next(i + 1)) found.push_back(i);
    return found;
}

TEST(markedPlacesTest, newPlacesHaveNoMarks) {
    cMarkedPlaces places;
    EXPECT_TRUE(marked(places).empty());

    places.restart(200);

    EXPECT_EQ(places.next(0), 200U);
}

TEST(markedPlacesTest, marksAreFoundInOrder) {
    cMarkedPlaces places;
    places.restart(200);

    for (const std::size_t place : {199U, 0U, 64U, 63U, 128U, 65U}) places.mark(place);

    EXPECT_EQ(marked(places), (std::vector<std::size_t>{0, 63, 64, 65, 128, 199}));
}

TEST(markedPlacesTest, aPlaceThatThereIsNotIsNotMarked) {
    cMarkedPlaces places;
    places.restart(3);

    places.mark(3);
    places.mark(static_cast<std::size_t>(-1));
    places.unmark(70);

    EXPECT_TRUE(marked(places).empty());
}

TEST(markedPlacesTest, aNewStartForgetsTheMarks) {
    cMarkedPlaces places;
    places.restart(70);
    places.mark(69);

    places.restart(70);

    EXPECT_TRUE(marked(places).empty());
}

TEST(markedPlacesTest, anyMarksAreThoseOfAPlainList) {
    std::mt19937 numbers(1);
    for (const std::size_t count : {1U, 63U, 64U, 65U, 300U}) {
        cMarkedPlaces places;
        places.restart(count);
        std::vector<bool> plain(count);
        for (int i = 0; i < 500; ++i) {
            const std::size_t place = numbers() % count;
            plain[place] = numbers() % 2 == 0;
            plain[place] ? places.mark(place) : places.unmark(place);
        }

        std::vector<std::size_t> expected;
        for (std::size_t i = 0; i < count; ++i)
            if (plain[i]) expected.push_back(i);
        EXPECT_EQ(marked(places), expected);
    }
}

}  // namespace

#include "flow/blockPool.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <thread>
#include <vector>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr bool keepsBlocks = false;
#else
constexpr bool keepsBlocks = true;
#endif

/// The bytes that the process has from the system's allocator; always 0 where that can't be asked.
std::size_t bytesInUse() {
#if defined(__GLIBC__)
    const auto info = mallinfo2();
    return info.uordblks + info.hblkhd;
#else
    return 0;
#endif
}

void takeAndGiveBack(std::size_t size, std::size_t count) {
    std::vector<void*> blocks(count);
    for (void*& block : blocks) block = cBlockPool::take(size);
    for (void* block : blocks) cBlockPool::giveBack(block, size);
}

TEST(blockPoolTest, aBlockThatWasGivenBackIsTheNextOfItsSize) {
    void* first = cBlockPool::take(48);
    void* second = cBlockPool::take(48);
    cBlockPool::giveBack(first, 48);
    cBlockPool::giveBack(second, 48);

    void* third = cBlockPool::take(48);
    void* fourth = cBlockPool::take(48);

    EXPECT_NE(first, second);
    EXPECT_EQ(third == second, keepsBlocks);
    EXPECT_EQ(fourth == first, keepsBlocks);
    cBlockPool::giveBack(third, 48);
    cBlockPool::giveBack(fourth, 48);
}

TEST(blockPoolTest, sizesOfOneStepShareTheirBlocksAndOthersDoNot) {
    void* small = cBlockPool::take(33);
    cBlockPool::giveBack(small, 33);

    void* larger = cBlockPool::take(49);
    void* same = cBlockPool::take(48);

    EXPECT_NE(larger, small);
    EXPECT_EQ(same == small, keepsBlocks);
    cBlockPool::giveBack(larger, 49);
    cBlockPool::giveBack(same, 48);
}

/// Blocks of one size, each full of a byte of its own.
class cBlockSizeTest : public ::testing::TestWithParam<std::size_t> {};

TEST_P(cBlockSizeTest, everyBlockIsItsTakersAlone) {
    const std::size_t size = GetParam();
    for (int round = 0; round < 2; ++round) {
        std::vector<unsigned char*> blocks;
        for (unsigned char i = 0; i < 20; ++i) {
            blocks.push_back(static_cast<unsigned char*>(cBlockPool::take(size)));
            std::fill_n(blocks.back(), size, i);
        }
        for (unsigned char i = 0; i < 20; ++i) {
            EXPECT_EQ(static_cast<std::size_t>(std::count(blocks[i], blocks[i] + size, i)), size);
            EXPECT_EQ(reinterpret_cast<std::uintptr_t>(blocks[i]) % alignof(std::max_align_t), 0U);
        }
        for (unsigned char* block : blocks) cBlockPool::giveBack(block, size);
    }
}

INSTANTIATE_TEST_SUITE_P(sizes, cBlockSizeTest, ::testing::Values(1, 8, 15, 16, 17, 32, 200, 255, 256, 257, 300, 5000));

TEST(blockPoolTest, whatIsLargeGoesBackToTheSystem) {
    const std::size_t before = bytesInUse();

    takeAndGiveBack(4096, 500);

    EXPECT_LT(bytesInUse(), before + 500 * 4096 / 2);
}

TEST(blockPoolTest, aThreadThatEndsGivesItsBlocksBackToTheSystem) {
    std::thread([] { takeAndGiveBack(256, 10); }).join();  // whatever the first thread of a process leaves behind
    const std::size_t before = bytesInUse();

    std::thread([] { takeAndGiveBack(256, 4000); }).join();

    EXPECT_LT(bytesInUse(), before + 4000 * 256 / 2);
}

TEST(blockPoolTest, aThreadHasBlocksOfItsOwn) {
    void* mine = cBlockPool::take(64);
    cBlockPool::giveBack(mine, 64);
    void* theirs = nullptr;

    std::thread([&] {
        theirs = cBlockPool::take(64);
        cBlockPool::giveBack(theirs, 64);
    }).join();
    void* again = cBlockPool::take(64);

    EXPECT_EQ(again == mine, keepsBlocks);
    EXPECT_NE(theirs, nullptr);
    if (keepsBlocks) {
        EXPECT_NE(theirs, mine);
    }
    cBlockPool::giveBack(again, 64);
}

TEST(poolAllocatorTest, aListCanGrowAndShrinkAcrossTheLargestBlock) {
    std::vector<std::uint64_t, cPoolAllocator<std::uint64_t>> numbers;
    for (std::uint64_t i = 0; i < 1000; ++i) numbers.push_back(i);
    numbers.resize(3);
    numbers.shrink_to_fit();
    numbers.push_back(7);

    EXPECT_EQ(numbers, (std::vector<std::uint64_t, cPoolAllocator<std::uint64_t>>{0, 1, 2, 7}));
}

TEST(poolAllocatorTest, moreThanTheMachineCanAddressIsRefused) {
    cPoolAllocator<std::uint64_t> allocator;

    EXPECT_THROW(allocator.allocate(std::numeric_limits<std::size_t>::max() / 8 + 1), std::bad_array_new_length);
}

}  // namespace

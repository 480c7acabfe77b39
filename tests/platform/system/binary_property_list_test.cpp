#include "platform/system/binary_property_list.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace tessary::system {
namespace {

using namespace std::string_literals;

/// A property list of these objects, one byte a reference, four an offset; the first is the top.
std::string listOf(const std::vector<std::string>& objects) {
    std::string bytes = "bplist00";
    std::string table;
    for (const std::string& object : objects) {
        table += "\0\0"s + static_cast<char>(bytes.size() >> 8U) + static_cast<char>(bytes.size());
        bytes += object;
    }
    const auto eightBytes = [](std::size_t number) {
        return "\0\0\0\0\0\0"s + static_cast<char>(number >> 8U) + static_cast<char>(number);
    };
    const std::string trailer = "\0\0\0\0\0\0\4\1"s + eightBytes(objects.size()) + eightBytes(0);
    return bytes + table + trailer + eightBytes(bytes.size());
}

/// `depth` lists, each of which holds the next one `uses` times; the last one holds `leaf`.
std::string nested(std::size_t depth, std::size_t uses, const std::string& leaf = "\x09") {
    std::vector<std::string> objects;
    for (std::size_t next = 1; next <= depth; ++next)
        objects.push_back(static_cast<char>(0xA0 + uses) + std::string(uses, char(next)));
    objects.push_back(leaf);
    return listOf(objects);
}

TEST(BinaryPropertyList, KnowsObjectsOfEveryKind) {
    for (const auto& sound :
         {"\x08"s, "\x09"s, "\x10\1"s, "\x13........"s, "\x22...."s, "\x23........"s,
          "\x33........"s, "\x42.."s, "\x4F\x10\1."s, "\x53T.x"s, "\x5F\x11\0\1a"s, "\x61\0a"s,
          "\x80."s, "\xA0"s, "\xD0"s, "\xAF\x10\0"s})
        EXPECT_TRUE(isSoundBinaryPropertyList(listOf({sound}))) << testing::PrintToString(sound);
    // Cut short, of no known kind, or with a count of no known form.
    for (const auto& unsound :
         {""s, "\x0F"s, "\x13..."s, "\x15"s, "\x21."s, "\x34...."s, "\x5Fxx"s, "\x5F"s,
          "\x63..."s.substr(0, 3), "\x70"s, "\xC0"s, "\xF0"s,
          "\x5F\x13\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF"s, "\xA2\0"s, "\xA1\0"s, "\xA1\1"s, "\xD1\1"s})
        EXPECT_FALSE(isSoundBinaryPropertyList(listOf({unsound})))
            << testing::PrintToString(unsound);
    EXPECT_TRUE(isSoundBinaryPropertyList(listOf({"\xD1\1\2", "\x51k", "\x09"})));
    EXPECT_FALSE(isSoundBinaryPropertyList(listOf({"\xD1\2\1", "\x51k", "\x09"})));
}

TEST(BinaryPropertyList, BoundsDepthAndWhatSharingUnfoldsTo) {
    EXPECT_TRUE(isSoundBinaryPropertyList(nested(deepestPropertyList - 1, 1)));
    EXPECT_FALSE(isSoundBinaryPropertyList(nested(deepestPropertyList, 1)));
    std::size_t depth = 0;
    for (std::size_t size = 1; size <= largestUnfoldedPropertyList; ++depth) {  // of the leaf first
        EXPECT_TRUE(isSoundBinaryPropertyList(nested(depth, 2))) << depth;
        size = 1 + 2 * (1 + size);
    }
    EXPECT_FALSE(isSoundBinaryPropertyList(nested(depth, 2)));
    EXPECT_FALSE(
        isSoundBinaryPropertyList(nested(4, 14, "\x4F\x11\x07\xFF" + std::string(2047, '.'))));
}

TEST(BinaryPropertyList, RefusesWhatIsCutShortOrNamesPlacesOutside) {
    const std::string sound = nested(2, 2);
    const std::size_t trailer = sound.size() - 32;
    for (std::size_t length = 0; length < sound.size(); ++length)
        EXPECT_FALSE(isSoundBinaryPropertyList(sound.substr(0, length)));
    for (const std::size_t place : {6U, 7U, 8U, 16U, 24U, 31U}) {
        std::string other = sound;
        other[trailer + place] = '\xFF';
        EXPECT_FALSE(isSoundBinaryPropertyList(other)) << place;
    }
}

}  // namespace
}  // namespace tessary::system

#include "platform/drawing/png_encoder.h"

#include <cairo.h>
#include <cstring>
#include <gtest/gtest.h>
#include <random>

namespace tessary::drawing {
namespace {

/// What a reader of PNG files makes of one.
Pixels decoded(const std::string& file) {
    std::string_view rest = file;
    const auto read = [](void* closure, unsigned char* out, unsigned length) {
        auto& from = *static_cast<std::string_view*>(closure);
        if (from.size() < length) return CAIRO_STATUS_READ_ERROR;
        std::memcpy(out, from.data(), length);
        from.remove_prefix(length);
        return CAIRO_STATUS_SUCCESS;
    };
    cairo_surface_t* surface = cairo_image_surface_create_from_png_stream(read, &rest);
    EXPECT_EQ(cairo_surface_status(surface), CAIRO_STATUS_SUCCESS);
    EXPECT_EQ(cairo_image_surface_get_format(surface), CAIRO_FORMAT_ARGB32);
    EXPECT_TRUE(rest.empty());
    Pixels result{cairo_image_surface_get_width(surface), cairo_image_surface_get_height(surface)};
    const auto row = static_cast<std::size_t>(result.width);
    result.values.resize(row * static_cast<std::size_t>(result.height));
    for (int y = 0; y < result.height; ++y)
        std::memcpy(
            &result.values[static_cast<std::size_t>(y) * row],
            cairo_image_surface_get_data(surface) + y * cairo_image_surface_get_stride(surface),
            4 * row);
    cairo_surface_destroy(surface);
    return result;
}

TEST(PNGEncoder, KeepsEveryPixel) {
    Pixels pixels{256, 256};
    for (std::uint32_t y = 0; y < 256; ++y) {
        for (std::uint32_t x = 0; x < 256; ++x) {
            const std::uint32_t alpha = y, red = std::min(x, alpha), green = alpha - red;
            const std::uint32_t blue = (x * 31 + y * 17) % (alpha + 1);
            pixels.values.push_back(alpha << 24U | red << 16U | green << 8U | blue);
        }
    }
    EXPECT_EQ(decoded(encodePNG(pixels)), pixels);
}

using Random = std::minstd_rand;

/// Stretches of a few colours, stretches like the row above, and some noise.
Pixels picture(int width, int height, Random& random) {
    Pixels result{width, height};
    auto& values = result.values;
    const auto row = static_cast<std::size_t>(width);
    const auto any = [&](std::size_t below) {
        return static_cast<std::uint32_t>(random() % below);
    };
    while (values.size() < row * static_cast<std::size_t>(height)) {
        const bool above = any(2) == 0 && values.size() >= row;
        const bool noise = any(4) == 0;
        const std::uint32_t flat = 0xFF000000U + 0x1F35U * any(5);
        for (std::size_t left = 1 + any(any(2) == 0 ? 3 : 2 * row); left > 0; --left)
            values.push_back(above   ? values[values.size() - row]
                             : noise ? 0xFF000000U | any(1U << 24U)
                                     : flat);
    }
    values.resize(row * static_cast<std::size_t>(height));
    return result;
}

TEST(PNGEncoder, KeepsFlatAndNoisyPicturesOfEveryWidth) {
    Random random{7};
    for (int width = 1; width <= 400; ++width) {
        const Pixels pixels = picture(width, 40, random);
        ASSERT_EQ(decoded(encodePNG(pixels)), pixels) << width;
    }
    for (const int width : {8190, 8191, 8192, 8193, 20000}) {  // a row reaches 32 KiB, and beyond
        const Pixels pixels = picture(width, 6, random);
        ASSERT_EQ(decoded(encodePNG(pixels)), pixels) << width;
        EXPECT_EQ(
            decoded(encodePNG({width, 2, 1,
                               std::vector<std::uint32_t>(2 * static_cast<std::size_t>(width))}))
                .values.size(),
            2U * static_cast<unsigned>(width));
    }
}

TEST(PNGEncoder, StatesItsColoursAndItsDensity) {
    const auto number = [](std::string_view bytes, std::size_t at) {
        std::uint32_t value = 0;
        for (std::size_t i = 0; i < 4; ++i)
            value = value << 8U | static_cast<unsigned char>(bytes[at + i]);
        return value;
    };
    for (const auto& [scale, perMetre] : {std::pair{1.0, 2835U}, {1.25, 3543U}, {3.0, 8504U}}) {
        const std::string file = encodePNG({1, 1, scale, {0}});
        std::string types;
        for (std::size_t at = 8; at < file.size(); at += 12 + number(file, at)) {
            const std::string type = file.substr(at + 4, 4);
            types += type + " ";
            EXPECT_TRUE(type != "sRGB" || file[at + 8] == 0);
            if (type != "pHYs") continue;
            EXPECT_EQ(number(file, at + 8), perMetre);
            EXPECT_EQ(number(file, at + 12), perMetre);
            EXPECT_EQ(file[at + 16], 1);
        }
        EXPECT_EQ(types, "IHDR sRGB pHYs IDAT IEND ");
    }
}

}  // namespace
}  // namespace tessary::drawing

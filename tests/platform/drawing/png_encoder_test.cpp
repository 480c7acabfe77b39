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
    EXPECT_EQ(cairo_image_surface_get_stride(surface), 4 * result.width);
    result.values.resize(static_cast<std::size_t>(result.width * result.height));
    std::memcpy(result.values.data(), cairo_image_surface_get_data(surface),
                4 * result.values.size());
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

/// Stretches of a few colours, stretches like the row above, and some noise.
Pixels picture(int width, int height, std::minstd_rand& random) {
    Pixels result{width, height};
    const auto row = static_cast<std::size_t>(width);
    result.values.resize(row * static_cast<std::size_t>(height));
    const auto any = [&](std::size_t below) {
        return static_cast<std::uint32_t>(random() % below);
    };
    std::uint32_t kind = 0, left = 0, flat = 0;
    for (std::size_t at = 0; at < result.values.size(); ++at, --left) {
        if (left == 0) {
            kind = any(8);
            left = 1 + any(any(2) == 0 ? 3 : 2 * row);
            flat = 0xFF000000U + 0x1F35U * any(5);
        }
        const bool above = kind < 4 && at >= row;
        result.values[at] = above       ? result.values[at - row]
                            : kind == 7 ? 0xFF000000U | any(1U << 24U)
                                        : flat;
    }
    return result;
}

TEST(PNGEncoder, KeepsFlatAndNoisyPicturesOfEveryWidth) {
    std::minstd_rand random{7};
    for (int width = 1; width <= 400; ++width) {
        const Pixels pixels = picture(width, 40, random);
        ASSERT_EQ(decoded(encodePNG(pixels)), pixels) << width;
    }
    for (const int width : {8190, 8191, 8192, 8193, 20000}) {  // a row reaches 32 KiB, and beyond
        const Pixels pixels = picture(width, 6, random);
        ASSERT_EQ(decoded(encodePNG(pixels)), pixels) << width;
    }
}

TEST(PNGEncoder, StatesItsColoursAndItsDensity) {
    using namespace std::string_literals;
    for (const auto& [scale, perMetre] :
         {std::pair{1.0, "\x0B\x13"s}, {1.25, "\x0D\xD7"s}, {3.0, "\x21\x38"s}}) {
        const std::string density = "\0\0"s + perMetre + "\0\0"s + perMetre + "\1"s;
        EXPECT_EQ(encodePNG({1, 1, scale, {0}}).substr(37, 25),
                  "sRGB\0\xAE\xCE\x1C\xE9\0\0\0\x09pHYs"s + density.substr(0, 8));
    }
}

}  // namespace
}  // namespace tessary::drawing

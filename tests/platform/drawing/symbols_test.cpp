#include "platform/drawing/symbols.h"

#include <algorithm>
#include <gtest/gtest.h>

#include "platform/drawing/ink.h"
#include "support/golden.h"
#include "support/rendering.h"

namespace tessary::drawing {
namespace {

using views::Weight;

/// Painted half transparent, so that ink on ink would show.
Pixels painted(const std::string& name, Weight weight, double size) {
    const views::Color half{0, 0, 1, 0.5};
    const auto [width, height] = symbol(name, weight).size;
    const views::Rect frame{{0, 0}, {width * size, height * size}};
    const views::SymbolElement element{name, views::Font::system(size, weight), half};
    return paintPixels({.size = frame.size, .scale = 1, .elements = {{frame, false, element}}},
                       realType());
}

/// Each as it looks, and the per mille of an em square that are ink in each weight.
TEST(Symbols, LookAsTheyDid) {
    std::string dump;
    std::vector<std::string> names(symbolNames().begin(), symbolNames().end());
    for (const std::string name : {"no.such.symbol", "", "bell", "Bell.slash"}) {
        EXPECT_EQ(symbol(name, Weight::medium), symbol("?", Weight::medium));
        if (!name.empty() && name.front() == 'n') names.push_back(name);
    }
    for (const std::string& name : names) {
        dump += "== " + name;
        double before = 0;
        for (const Weight weight : {Weight::regular, Weight::medium, Weight::semibold}) {
            double ink = 0;
            for (const std::uint32_t pixel : painted(name, weight, 100).values) {
                EXPECT_LE(pixel >> 24U, 129U) << name << ": ink on ink";
                ink += (pixel >> 24U) / 128.0 / 10;
            }
            EXPECT_GT(ink, before + 3) << name;
            before = ink;
            dump += ' ' + std::to_string(std::lround(ink));
        }
        dump += '\n' + inked(painted(name, Weight::medium, 48)) + '\n';
    }
    expectGolden("symbols.txt", dump);
}

}  // namespace
}  // namespace tessary::drawing

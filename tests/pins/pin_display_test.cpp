#include "pins/pin_display.h"

#include <gtest/gtest.h>
#include <iomanip>

#include "support/container.h"
#include "support/golden.h"

namespace tessary::pins {
namespace {

using Snapshot = snapshot::AlarmPinsSnapshot;
using Display = PinDisplay<Snapshot>;

/// "choose", or which of the pins is shown: "#1".
std::string shown(const std::optional<Snapshot>& file, const std::optional<std::string>& id) {
    const Display display = Display::resolve(file, id, exampleNow);
    if (const auto* state = display.pinned()) {
        EXPECT_EQ(state->pin, file->pins.at(std::stoul(state->pin.label.substr(1))));
        return state->pin.label;
    }
    return std::vector{"", "notPinned", "choose", "removed"}.at(display.value().index());
}

/// A case is the identifier that a widget is to show, "-" for none, and those of the file's pins.
/// They stand in quotes, as they may have blanks around them.
TEST(PinDisplay, FindsThePinOrSaysWhyThereIsNone) {
    expectTranscript("choices.txt", [](const std::string& line) {
        std::istringstream in{unescaped(line)};
        std::string wanted, each;
        in >> std::quoted(wanted);
        std::vector<std::string> ids;
        while (in >> std::quoted(each)) ids.push_back(each);
        const auto choice = wanted == "-" ? std::nullopt : std::optional{wanted};
        std::string all = shown({}, choice);
        for (const int schema : {-1, 0, 1, 2})
            all += ' ' + shown(foundation::decodeJSON<Snapshot>(examplePins(ids, schema)).value(),
                               choice);
        return all;
    });
}

}  // namespace
}  // namespace tessary::pins

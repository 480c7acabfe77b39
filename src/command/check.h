// What keeps the widgets from their data, or that nothing does: the same walk that they take, with
// every finding on the way kept.
//
//     const Inspection found = inspect(source);
//     found.usable                                   // whether all three files are
//     found.files[0].problem.value_or("")            // "No such file or directory"
//     asJSON(found, JSONWriter::Style::indented)     // check_report.h
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "command/excerpt.h"
#include "platform/foundation/date.h"
#include "snapshot/alarms_snapshot.h"
#include "snapshot/reading.h"

namespace tessary::command {

using foundation::Date;

/// The step of the walk that a file's ended at.
enum class Step { group, container, file, content, schema, usable };

/// What a pin's widget shows first: the pin as current, or why it is not.
enum class PinCondition { fresh, stale, authExpired, error };

/// Where the content stops being what it should be.
struct ContentFault {
    foundation::DecodingFault reason{};
    Excerpt at{};
    bool operator==(const ContentFault&) const = default;
};

/// How many there are; none of what the file's kind does not hold.
struct Counts {
    std::optional<std::int64_t> firing{};  ///< as the file says
    std::optional<std::int64_t> targets{};
    std::optional<std::int64_t> topAlarms{};
    std::optional<std::int64_t> pins{};
    std::optional<std::int64_t> points{};  ///< of all pins together
    bool operator==(const Counts&) const = default;
};

/// An identifier that more than one pin or alarm has, as the first of them writes it.
struct Repeat {
    std::string identifier{};
    std::int64_t times{};
    bool operator==(const Repeat&) const = default;
};

struct PinState {
    std::string id{};
    std::string label{};
    std::string profile{};
    PinCondition shows{};
    std::optional<std::string> error{};
    bool hidden{};  ///< an earlier pin has the identifier, so no widget shows this one
    bool operator==(const PinState&) const = default;
};

/// What the widget of a file shows. Of a pin widget it is the one newly added, on the first pin.
struct Shown {
    std::string display{};                   ///< the display state's case
    std::string why{};                       ///< for a person; empty where there is data
    bool stale{};                            ///< the file is too old
    std::optional<Date> staleAfter{};        ///< when it became or becomes that
    std::vector<snapshot::Target> paused{};  ///< those whose sign-in has expired
    std::vector<PinState> pins{};
    bool operator==(const Shown&) const = default;
};

struct FileFinding {
    std::string name{};    ///< "alarms.json"
    std::string widget{};  ///< "alarms", "alarm", "metric"
    std::optional<std::string> path{};
    Step step{Step::group};
    std::optional<std::string> problem{};  ///< for a person; none for a usable file
    std::optional<std::int64_t> size{};    ///< bytes
    std::optional<Date> modified{};
    std::optional<ContentFault> fault{};
    std::optional<std::int64_t> schemaVersion{};
    std::optional<Date> updated{};
    std::optional<std::int64_t> intervalSeconds{};
    std::optional<Counts> counts{};
    std::vector<Repeat> repeated{};
    std::vector<std::string> notes{};  ///< what is allowed but hardly meant
    Shown shows{};
    std::size_t digest{};  ///< differs where the content does; told to nobody
    bool operator==(const FileFinding&) const = default;
};

struct Inspection {
    Date now{};
    bool usable{};  ///< all three files are
    snapshot::AppGroup group{};
    bool groupAssumed{};  ///< the container was given by hand, so that no dictionary was asked
    std::optional<std::string> container{};
    std::vector<FileFinding> files{};
    bool operator==(const Inspection&) const = default;
};

/// Looks at the three files. One that fails never throws.
Inspection inspect(const snapshot::Source& source);

/// Whether two looks found the same. Time alone, and touching a file, change nothing.
bool foundTheSame(Inspection one, Inspection other);

}  // namespace tessary::command

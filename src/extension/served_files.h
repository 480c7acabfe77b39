// The files that the extension's process may be told of: the whole of what its broker opens.
//
//     const ServedFiles served{Places::given("/c", {})};
//     served("/c/widgets/alarms.json")      // true
//     served("/c/widgets/secrets.json")     // false
#pragma once

#include <filesystem>
#include <optional>

#include "snapshot/source.h"

namespace tessary::extension {

/// A snapshot of a container that the places allow, or one of their information dictionaries.
class ServedFiles {
public:
    explicit ServedFiles(snapshot::Places places) : places_(std::move(places)) {}

    bool operator()(const std::filesystem::path& path) const;

private:
    /// The only one that a file may lie in, spelled as whoever asks spells it.
    std::optional<std::filesystem::path> containerOf(const std::filesystem::path& file) const;

    snapshot::Places places_;
};

}  // namespace tessary::extension

// Where the feed's work lies: the container's files, and the memory from one start to the next.
//
//     auto store = Store::open("/home/ana/.local/share/group-containers/G", memory);
//     store->write(snapshot);              // widgets/alarms.json in it
//     store->remember({targets});
//
// One feed writes at a time: whoever opens the store second is told so. The process's mask decides
// who may read what is made; the feed leaves it to the user alone.
#pragma once

#include <cstdint>
#include <filesystem>
#include <vector>

#include "feed/notices/notices.h"
#include "feed/rounds/pins_round.h"
#include "feed/rounds/targets.h"
#include "platform/foundation/json_writing.h"
#include "platform/system/files.h"
#include "platform/system/output.h"
#include "snapshot/source.h"

namespace tessary::store {

/// What is known of the world when the feed starts again. No secret is in it.
struct Memory {
    std::vector<rounds::KnownTarget> targets{};
    std::int64_t ignored{};  ///< alarms that the last round left out by their names
    std::vector<rounds::KnownAlarm> alarmPins{};
    std::vector<rounds::KnownMetric> metricPins{};
    std::vector<notices::Said> said{};
    bool operator==(const Memory&) const = default;
};

class Store {
public:
    /// Makes the folders, and takes the container for as long as the store is there. A fault where
    /// another feed has it, or a folder cannot be made.
    static foundation::Result<Store> open(const std::filesystem::path& container,
                                          const std::filesystem::path& memory);

    /// The fault of a container that another feed has.
    static foundation::Fault taken(const std::filesystem::path& container);

    /// Puts a snapshot in its file's place.
    template <class Snapshot>
    foundation::Result<void> write(const Snapshot& snapshot) const {
        return system::saveFile(fileOf<Snapshot>(), foundation::toJSON(snapshot) + "\n");
    }
    template <class Snapshot>
    std::filesystem::path fileOf() const {
        return container_ / snapshot::pathOf(Snapshot::fileName);
    }

    foundation::Result<void> remember(const Memory& memory) const;

private:
    Store(std::filesystem::path container, std::filesystem::path memory, system::Descriptor lock)
        : container_(std::move(container)), memory_(std::move(memory)), lock_(std::move(lock)) {}

    std::filesystem::path container_;
    std::filesystem::path memory_;
    system::Descriptor lock_;
};

/// What was remembered there; nothing known where no file is, or one that is not understood.
Memory remembered(const std::filesystem::path& memory);

}  // namespace tessary::store

template <>
inline constexpr auto tessary::foundation::fieldsOf<tessary::store::Memory> = std::tuple{
    Field{"targets", &tessary::store::Memory::targets},
    Field{"ignored", &tessary::store::Memory::ignored},
    Field{"alarmPins", &tessary::store::Memory::alarmPins},
    Field{"metricPins", &tessary::store::Memory::metricPins},
    Field{"said", &tessary::store::Memory::said},
};

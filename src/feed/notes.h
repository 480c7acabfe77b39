// What the feed says on standard error.
//
//     complain("nothing is watched");      // tessary-widgets-feed: nothing is watched
//     notes.tellTargets(memory);           // a line for each target whose condition has changed
#pragma once

#include <map>
#include <string>

#include "feed/store/store.h"
#include "platform/foundation/result.h"

namespace tessary::feed {

/// The program's exit statuses.
enum Status { done = 0, failed = 1, wrongCall = 2 };

void complain(const std::string& line);
/// The status, once the fault is said.
int complained(const foundation::Fault& fault, Status status);
/// Of a program that has this to say.
int printed(const std::string& text);

/// Says how things stand, each only when that has changed.
class Notes {
public:
    void tellTargets(const store::Memory& memory);
    /// An empty fault is none.
    void tellFault(const std::string& matter, const std::string& fault);

private:
    void tell(const std::string& matter, const std::string& state, const std::string& line);

    std::map<std::string, std::string> states_{};  ///< by what they are of; empty: as it should be
};

}  // namespace tessary::feed

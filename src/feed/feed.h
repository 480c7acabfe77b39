// The feed: rounds of questions, and the widgets' files that follow from them.
//
//     run({"--once"})        // 0 once a round was made and written
#pragma once

#include <string>
#include <vector>

#include "feed/aws/client.h"

namespace tessary::feed {

/// The whole program for the words behind its name; its exit status. Rounds have this patience.
int run(const std::vector<std::string>& words, const aws::Patience& patience = {});

}  // namespace tessary::feed

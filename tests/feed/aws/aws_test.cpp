#include <gtest/gtest.h>

#include "feed/aws/alarms.h"
#include "feed/aws/endpoint.h"
#include "feed/aws/profiles.h"
#include "feed/aws/trouble.h"
#include "platform/foundation/json_writing.h"
#include "support/golden.h"

namespace tessary::aws {
namespace {

/// A case is the text of ~/.aws/config and, behind "|||", of ~/.aws/credentials.
TEST(Profiles, AreWhatBothFilesSay) {
    expectTranscript("profiles.txt", [](const std::string& line) {
        const std::string text = replaced(unescaped(line), " / ", "\n");
        const auto cut = std::min(text.find("|||"), text.size());
        const Profiles profiles{text.substr(0, cut), text.substr(std::min(cut + 3, text.size()))};
        std::string said;
        for (const Profile& profile : profiles.all()) {
            said += '[' + profile.name + "] " + std::string{foundation::name(profile.signIn())} +
                    ", " + profile.remedy() + ", " + profile.signInKey().value_or("-") + '\n';
            for (const auto& [key, value] : profile.settings)
                said += "  " + key + " = " + value + '\n';
            for (const auto& [key, value] : profile.session)
                said += "  > " + key + " = " + value + '\n';
        }
        return said;
    });
}

/// A case is the status of HTTP and the body.
TEST(Trouble, IsWhatTheAnswerSays) {
    expectTranscript("troubles.txt", [](const std::string& line) {
        const auto body = unescaped(line.substr(std::min(line.find(' ') + 1, line.size())));
        const auto [kind, words] = troubleOf(refusalOf(std::stoi(line), body));
        return std::string{foundation::name(kind)} + " | " + words;
    });
}

TEST(Endpoint, IsTheRegionsOwn) {
    expectTranscript("endpoints.txt", [](const std::string& region) {
        if (!isRegion(region)) return std::string{"no region"};
        return cloudWatchURL(region, false) + '\n' + cloudWatchURL(region, true) + '\n' +
               consoleHost(region).value_or("no console");
    });
}

}  // namespace
}  // namespace tessary::aws

#include <gtest/gtest.h>

#include "feed/aws/alarms.h"
#include "feed/aws/endpoint.h"
#include "feed/aws/profiles.h"
#include "feed/aws/shell_words.h"
#include "feed/aws/sso_cache.h"
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

TEST(ShellWords, AreAsAShellCutsThem) {
    expectTranscript("shell_words.txt", [](const std::string& line) {
        const auto words = shellWords(unescaped(line));
        return words ? '[' + foundation::joined(*words, "] [") + ']' : "none";
    });
}

/// A case is what the file is named after, and what it holds; the clock says noon.
TEST(SSOCache, SaysWhenASignInEnds) {
    expectTranscript("sso_cache.txt", [](const std::string& line) {
        const auto cut = line.find(' ');
        const auto state = readSignInState(line.substr(cut + 1));
        const auto noon = toolTimeMs("2024-11-16T12:00:00Z").value_or(0);
        return ssoCacheFile(line.substr(0, cut)) + '\n' +
               (state ? std::to_string(state->endsMs - noon) + (state->canRenew ? " renews" : "") +
                            (state->hasExpired(noon) ? " expired" : "")
                      : "none");
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

// Any bytes as the AWS tools' files: settings, a profile that runs a program, the state of a
// sign-in.
#include <string>

#include "feed/aws/ini.h"
#include "feed/aws/profiles.h"
#include "feed/aws/shell_words.h"
#include "feed/aws/sso_cache.h"
#include "feed/links/console.h"
#include "fuzzer.h"

namespace tessary::fuzz {
namespace {

/// As the settings would be written, which reads back the same.
std::string written(const std::vector<aws::Section>& sections) {
    std::string text;
    for (const auto& [kind, name, settings] : sections) {
        text += '[' + (kind.empty() ? "\"" : kind + " \"") + name + "\"]\n";
        for (const auto& [key, value] : settings) text += key + " = " + value + '\n';
    }
    return text;
}

bool isWritable(const aws::Section& section) {
    const auto isPlain = [](const std::string& text) {
        return text.find_first_of("[]\"' \t\r\f\v#;") == text.npos;
    };
    bool isWhole = isPlain(section.name) && !section.name.empty() && isPlain(section.kind);
    for (const auto& [key, value] : section.settings)
        isWhole = isWhole && isPlain(key) && !key.empty();
    return isWhole;
}

void checkSections(std::string_view bytes) {
    auto sections = aws::parseINI(bytes);
    for (const auto& section : sections)
        for (const auto& [key, value] : section.settings)
            require(key.find('\n') == key.npos && value.find('\n') == value.npos,
                    "a setting is of one line", key);
    std::erase_if(sections, [](const auto& each) { return !isWritable(each); });
    require(aws::parseINI(written(sections)) == sections, "what is written is read again",
            written(sections));
}

void checkProfile(const aws::Profiles& profiles, const aws::Profile& profile) {
    require(profiles.find(profile.name) != nullptr, "a profile is found", profile.name);
    const auto words = aws::shellWords(profile.remedy());
    require(words && words->back() == profile.name, "a shell takes the name for one word",
            profile.remedy());
    if (const auto key = profile.signInKey())
        require(aws::ssoCacheFile(*key).size() == 45, "a sign-in's file is named by its digest");
    const links::Console console{profiles};
    const auto page = console.alarms({profile.name, "us-east-1"});
    require(page && page->starts_with("https://"), "a page is on the web");
}

}  // namespace

void fuzz(std::string_view bytes) {
    checkSections(bytes);
    const std::size_t middle = bytes.size() / 2;
    const aws::Profiles profiles{bytes.substr(0, middle), bytes.substr(middle)};
    for (const auto& profile : profiles.all()) checkProfile(profiles, profile);
    if (const auto words = aws::shellWords(bytes))
        for (const auto& word : *words)
            require(word.size() <= bytes.size(), "a word is a part of the line", word);
    if (const auto state = aws::readSignInState(bytes))
        require(state->hasExpired(state->endsMs) == !state->canRenew, "a sign-in ends at its end");
}

}  // namespace tessary::fuzz

#include "extension/widget_host.h"

#include <system_error>

#include "extension/renderer.h"
#include "platform/system/information_dictionary.h"

namespace tessary::extension {

namespace fs = std::filesystem;
using locale::UserLocale;
using system::InformationDictionary;
using system::Surroundings;

namespace {

/// The group that a container given by hand belongs to.
std::optional<std::string> anyGroup(std::string_view) { return "com.tessary.desktop"; }

UserLocale localeFor(const RequestOptions& options) {
    if (options.locale && options.timeZone) return {*options.locale, *options.timeZone};
    UserLocale locale = UserLocale::fromEnvironment();
    if (options.locale) locale.identifier = *options.locale;
    if (options.timeZone) locale.timeZone = *options.timeZone;
    return locale;
}

/// The first dictionary that is there, or the last.
InformationDictionary dictionary(const std::vector<fs::path>& places) {
    std::error_code ignored;
    for (const fs::path& place : places)
        if (fs::exists(place, ignored)) return InformationDictionary{place};
    return InformationDictionary{places.back()};
}

}  // namespace

std::vector<fs::path> dictionaryPlaces(const RequestOptions& options) {
    if (options.info) return {*options.info};
    std::error_code ignored;
    const fs::path folder = fs::read_symlink("/proc/self/exe", ignored).parent_path();
    return {folder / "info.json", folder.parent_path() / "share/tessary-widgets/info.json"};
}

Surroundings surroundingsFor(const RequestOptions& options) {
    Surroundings result;
    if (options.at) result.clock = [now = *options.at] { return now; };
    if (options.container) result.container = [root = *options.container](auto) { return root; };
    if (options.container && !options.info) {
        result.information = anyGroup;
    } else {
        result.information = [places = dictionaryPlaces(options)](std::string_view) {
            return dictionary(places).appGroup();
        };
    }
    result.locale = localeFor(options);
    return result;
}

std::string picture(const std::string& kind, const widgets::WidgetEntry& entry,
                    const PictureOptions& options) {
    Renderer renderer{system::surroundings().locale.identifier};
    return renderer.paint(renderer.layOut(entry, options), kind, entry.date, options);
}

}  // namespace tessary::extension

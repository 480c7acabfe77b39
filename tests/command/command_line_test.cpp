#include "command/command_line.h"

#include <gtest/gtest.h>

#include "support/golden.h"

namespace tessary::command {
namespace {

/// Those that are given.
std::string printed(const RequestOptions& request) {
    const auto& [container, info, which, preview, pin, at, locale, timeZone] = request;
    std::string text = ' ' + std::string{foundation::name(which)};
    if (container) text += " container " + container->string();
    if (info) text += " info " + info->string();
    if (preview) text += " preview";
    if (pin.kind == PinChoice::Kind::identifier) text += " pin '" + pin.identifier + "'";
    if (pin.kind == PinChoice::Kind::none) text += " unpinned";
    if (at) text += " at " + std::to_string(at->seconds);
    if (locale) text += " locale " + *locale;
    if (timeZone) text += " zone " + *timeZone;
    return text;
}

/// A call as one line that holds all of it.
struct CallPrinter {
    std::string operator()(const ListCommand& list) const {
        return list.json ? "list json" : "list";
    }
    std::string operator()(const TimelineCommand& timeline) const {
        const auto& [widget, request, json] = timeline;
        return "timeline " + widget + printed(request) + (json ? " json" : "");
    }
    std::string operator()(const RenderCommand& render) const {
        const auto& [family, entry, redacted, scale, format, output, locale] = render.picture;
        return "render " + render.widget + printed(render.request) + ' ' +
               std::string{foundation::name(family)} + " entry " + std::to_string(entry) +
               (redacted ? " redacted " : " ") + std::to_string(scale) + "x " +
               std::string{foundation::name(format)} + " to " + output.value_or("-").string();
    }
    std::string operator()(const PinsCommand& pins) const {
        std::string ids;
        for (const std::string& id : pins.ids) ids += " id '" + id + "'";
        return "pins " + pins.widget + printed(pins.request) + ids + (pins.json ? " json" : "");
    }
    std::string operator()(const ServeCommand& serve) const {
        return "serve" + printed(serve.request) + (serve.requireSandbox ? " sandboxed" : "");
    }
    std::string operator()(const CheckCommand& check) const {
        return "check" + printed(check.request) + (check.json ? " json" : "") +
               (check.watch ? " watch" : "") + (check.strictness.notes ? " strict" : "") +
               (check.strictness.stale ? " fresh" : "");
    }
    std::string operator()(const Information& information) const { return information.text; }
};

std::string parsed(const std::vector<std::string>& words) {
    const auto call = parseCommandLine(words);
    return call ? std::visit(CallPrinter{}, *call) : "fault: " + call.fault().message();
}

TEST(CommandLine, UnderstandsCallsAndNamesTheWordAtFault) {
    expectTranscript("calls.txt", [](const std::string& line) {
        const std::string call = parsed(tessary::words(line));
        EXPECT_TRUE(!call.starts_with("fault") || call.find('\n') == call.npos);
        const bool isHelp = call.find("\nUsage: ") != call.npos;
        std::istringstream lines{call};
        for (std::string each; isHelp && std::getline(lines, each);)
            EXPECT_LE(each.size(), 80U) << each;
        return replaced(call, TESSARY_VERSION, "VERSION");
    });
}

}  // namespace
}  // namespace tessary::command

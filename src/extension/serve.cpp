#include "extension/serve.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <iostream>
#include <malloc.h>
#include <optional>
#include <stdexcept>
#include <unistd.h>

#include "extension/requests.h"
#include "extension/served_files.h"
#include "extension/widget_host.h"
#include "platform/drawing/machine_fonts.h"
#include "platform/foundation/joined.h"
#include "platform/sandbox/file_broker.h"
#include "platform/sandbox/sandbox.h"
#include "platform/system/conversation.h"

namespace tessary::extension {

namespace fs = std::filesystem;
using foundation::Fault;
using foundation::joined;

namespace {

/// Large blocks go back to the system as soon as they are free, so that one large file does not
/// leave the process large.
void keepMemorySmall() {
    constexpr int large = 4 << 20;  // bytes, more than the pixels of any card
    ::mallopt(M_MMAP_THRESHOLD, large);
    ::mallopt(M_TRIM_THRESHOLD, large);
}

/// A descriptor that is not open would be given to something else.
foundation::Result<void> streamsAreOpen() {
    if (::fcntl(STDIN_FILENO, F_GETFD) < 0)
        return Fault{std::string{"cannot read standard input: "} + std::strerror(errno)};
    if (::fcntl(STDOUT_FILENO, F_GETFD) < 0)
        return Fault{std::string{"cannot write standard output: "} + std::strerror(errno)};
    const bool hasErrorStream = ::fcntl(STDERR_FILENO, F_GETFD) >= 0;
    if (!hasErrorStream && ::open("/dev/null", O_WRONLY) != STDERR_FILENO)
        return Fault{"cannot open /dev/null"};
    return {};
}

/// Nothing to a blank line.
std::string replyTo(const system::Line& line, Extension& extension, const system::Send& send) {
    if (line.isTooLong)
        return extension::refusal("line: longer than " + std::to_string(system::longestLine) +
                                  " bytes");
    const bool isBlank = line.text.find_first_not_of(" \t\r") == std::string::npos;
    return isBlank ? "" : extension.answer(line.text, send);
}

}  // namespace

foundation::Result<void> serve(const ServeOptions& options) {
    if (auto streams = streamsAreOpen(); !streams) return streams;
    ::closefrom(STDERR_FILENO + 1);  // what a host forgot to close
    keepMemorySmall();
    snapshot::Source source = sourceOf(options.request);
    sandbox::FileBroker broker{ServedFiles{source.places}};
    source.read = [&](const fs::path& path) { return broker.read(path); };
    const locale::UserLocale locale = localeOf(options.request);

    // Lists the fonts first: from here on none can be looked for.
    const auto open = sandbox::enterSandbox({.readable = drawing::fontPlaces()});
    if (!open.empty() && options.requireSandbox)
        return Fault{"no whole sandbox: " + joined(open, "; ")};
    if (!open.empty())
        std::cerr << "tessary-widgets: running without a whole sandbox: " << joined(open, "; ")
                  << '\n';

    Extension extension{source, locale};
    const auto throwIfGone = [&] {
        if (broker.isGone()) throw std::runtime_error{"the file broker is gone"};
    };
    return system::hold({STDIN_FILENO, STDOUT_FILENO},
                        [&](const system::Line& line, const system::Send& send) {
                            std::string rest = replyTo(line, extension, [&](std::string part) {
                                throwIfGone();
                                send(std::move(part));
                            });
                            throwIfGone();
                            return rest;
                        });
}

}  // namespace tessary::extension

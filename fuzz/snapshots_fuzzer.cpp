// Any bytes as each of the files' records: what decodes says the same when it is printed and
// decoded again, what does not has a reason that fits on a line.
#include <string>

#include "fuzzer.h"
#include "platform/foundation/json_writing.h"
#include "snapshot/alarms_snapshot.h"
#include "snapshot/pins_snapshot.h"

namespace tessary::fuzz {
namespace {

using foundation::decodeJSON, foundation::DecodingFault, foundation::JSONWriter;

/// Beyond this a message would be no line to show in a terminal, in bytes.
constexpr std::size_t longestFound = 200;

void checkFault(const DecodingFault& fault, std::string_view bytes) {
    const std::string message = fault.message();
    require(fault.offset <= bytes.size(), "a fault lies inside the text", message);
    require(isOneLine(message), "a fault's message is one line of UTF-8", message);
    require(!fault.expected.empty() && !fault.found.empty(), "a fault says both sides", message);
    require(fault.found.size() <= longestFound, "a fault shortens what it found", message);
}

template <class Record>
void checkRecord(std::string_view bytes) {
    const auto decoded = decodeJSON<Record>(bytes);
    if (!decoded) return checkFault(decoded.fault(), bytes);
    for (const auto style : {JSONWriter::Style::compact, JSONWriter::Style::indented}) {
        const std::string printed = foundation::toJSON(decoded.value(), style);
        const auto again = decodeJSON<Record>(printed);
        require(bool{again}, "what was printed decodes", printed);
        require(again.value() == decoded.value(), "it decodes to the same record", printed);
    }
    const std::string spaced = " \t" + std::string{bytes} + "\r\n";
    const auto again = decodeJSON<Record>(spaced);
    require(again && again.value() == decoded.value(), "space around a text does not matter");
    const std::string doubled = std::string{bytes} + "{}";
    require(!decodeJSON<Record>(doubled), "one value is all that a text holds");
}

}  // namespace

void fuzz(std::string_view bytes) {
    checkRecord<snapshot::AlarmsSnapshot>(bytes);
    checkRecord<snapshot::AlarmPinsSnapshot>(bytes);
    checkRecord<snapshot::MetricPinsSnapshot>(bytes);
}

}  // namespace tessary::fuzz

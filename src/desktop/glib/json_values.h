// Reading JSON whose shape nobody promised: every getter answers with nothing where a member is
// absent or of another kind.
//
//     const JsonText json{R"({"id": 7, "name": "a"})"};
//     integer(json.object(), "id")      // 7
//     text(json.object(), "id")         // nothing
#pragma once

#include <cstdint>
#include <json-glib/json-glib.h>
#include <optional>
#include <string>
#include <string_view>

#include "desktop/glib/handles.h"

namespace tessary::glib {

/// A parsed text.
class JsonText {
public:
    explicit JsonText(std::string_view text);
    /// The outermost object; null where the text is no JSON or something else. Lives as long as
    /// this does, as does everything in it.
    JsonObject* object() const;

private:
    Object<JsonParser> parser_{json_parser_new()};
    bool parsed_{};
};

std::optional<std::int64_t> integer(JsonObject* object, const char* name);
/// A number with or without a fraction.
std::optional<double> number(JsonObject* object, const char* name);
std::optional<std::string> text(JsonObject* object, const char* name);
/// Whether the member is there and null.
bool isNull(JsonObject* object, const char* name);
JsonArray* array(JsonObject* object, const char* name);
JsonObject* object(JsonObject* object, const char* name);
/// The object at a place of an array, or null.
JsonObject* objectAt(JsonArray* array, unsigned index);
std::optional<std::string> textAt(JsonArray* array, unsigned index);

/// The text of what was built, which must be complete.
std::string built(JsonBuilder* builder, bool pretty);

}  // namespace tessary::glib

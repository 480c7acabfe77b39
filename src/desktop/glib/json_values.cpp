#include "desktop/glib/json_values.h"

namespace tessary::glib {

namespace {

JsonNode* member(JsonObject* object, const char* name) {
    return object ? json_object_get_member(object, name) : nullptr;
}

bool holds(JsonNode* node, GType type) {
    return node && JSON_NODE_HOLDS_VALUE(node) && json_node_get_value_type(node) == type;
}

JsonNode* valueOf(JsonObject* object, const char* name, GType type) {
    const auto node = member(object, name);
    return holds(node, type) ? node : nullptr;
}

}  // namespace

JsonText::JsonText(std::string_view text) {
    const auto length = static_cast<gssize>(text.size());
    parsed_ = json_parser_load_from_data(parser_.get(), text.data(), length, nullptr);
}

JsonObject* JsonText::object() const {
    const auto root = parsed_ ? json_parser_get_root(parser_.get()) : nullptr;
    return root && JSON_NODE_HOLDS_OBJECT(root) ? json_node_get_object(root) : nullptr;
}

std::optional<std::int64_t> integer(JsonObject* object, const char* name) {
    const auto node = valueOf(object, name, G_TYPE_INT64);
    return node ? std::optional{std::int64_t{json_node_get_int(node)}} : std::nullopt;
}

std::optional<double> number(JsonObject* object, const char* name) {
    if (const auto whole = integer(object, name)) return static_cast<double>(*whole);
    const auto node = valueOf(object, name, G_TYPE_DOUBLE);
    return node ? std::optional{json_node_get_double(node)} : std::nullopt;
}

std::optional<std::string> text(JsonObject* object, const char* name) {
    const auto node = valueOf(object, name, G_TYPE_STRING);
    return node ? std::optional<std::string>{json_node_get_string(node)} : std::nullopt;
}

bool isNull(JsonObject* object, const char* name) {
    const auto node = member(object, name);
    return node && JSON_NODE_HOLDS_NULL(node);
}

JsonArray* array(JsonObject* object, const char* name) {
    const auto node = member(object, name);
    return node && JSON_NODE_HOLDS_ARRAY(node) ? json_node_get_array(node) : nullptr;
}

JsonObject* object(JsonObject* object, const char* name) {
    const auto node = member(object, name);
    return node && JSON_NODE_HOLDS_OBJECT(node) ? json_node_get_object(node) : nullptr;
}

JsonObject* objectAt(JsonArray* array, unsigned index) {
    const auto node = json_array_get_element(array, index);
    return JSON_NODE_HOLDS_OBJECT(node) ? json_node_get_object(node) : nullptr;
}

std::optional<std::string> textAt(JsonArray* array, unsigned index) {
    const auto node = json_array_get_element(array, index);
    return holds(node, G_TYPE_STRING) ? std::optional<std::string>{json_node_get_string(node)}
                                      : std::nullopt;
}

std::string built(JsonBuilder* builder, bool pretty) {
    const std::unique_ptr<JsonNode, decltype(&json_node_unref)> root{json_builder_get_root(builder),
                                                                     json_node_unref};
    return Text{json_to_string(root.get(), pretty)}.get();
}

}  // namespace tessary::glib

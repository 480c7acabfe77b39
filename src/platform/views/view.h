// Views as values: what a widget shows, said in one expression.
//
// A view record keeps the fields that are its own and has one `body()`; anything with a `body()` is
// a view. A modifier returns a new view around the old one and changes nothing in place. Views
// copy, compare and may be laid out any number of times with the same result (layout.h).
//
// A record that shows something in the user's words, by the moment or by the widget's size has a
// `body(const Environment&)`, one that draws into its room a `body(const Size&)`; it compares, and
// its content is made once the argument is known.
//
//     struct Greeting {
//         std::string name{};
//         View body() const {
//             return VStack(Alignment::leading, 2, {
//                        Text("Hello").weight(Weight::semibold),
//                        when(!name.empty(), [&] { return Text(name); }),
//                    })
//                 .font(Font::system(11))
//                 .lineLimit(1);
//         }
//     };
//     View{Greeting{"Ada"}} == View{Greeting{"Ada"}}      // true
#pragma once

#include <concepts>
#include <limits>
#include <string>
#include <variant>
#include <vector>

#include "platform/views/box.h"
#include "platform/views/deferred.h"
#include "platform/views/environment.h"
#include "platform/views/geometry.h"
#include "platform/views/paint.h"
#include "platform/views/path.h"

namespace tessary::views {

class View;

template <class Record>
concept ViewRecord = requires(const Record& record) {
    { record.body() } -> std::convertible_to<View>;
};
template <class Record, class Argument>
concept RecordReading = requires(const Record& record, const Record& other,
                                 const Argument& argument) {
    { record.body(argument) } -> std::convertible_to<View>;
    { record == other } -> std::convertible_to<bool>;
};

enum class Axis { horizontal, vertical };

/// A size given in one or both dimensions; a dimension left out passes through. Points.
struct FixedFrame {
    std::optional<double> width{};
    std::optional<double> height{};
    Alignment alignment{Alignment::center};
    bool operator==(const FixedFrame&) const = default;
};

/// Bounds for a size, in points; an infinite maximum takes all the room that is offered.
struct FlexibleFrame {
    std::optional<double> minWidth{};
    std::optional<double> maxWidth{};
    std::optional<double> minHeight{};
    std::optional<double> maxHeight{};
    Alignment alignment{Alignment::center};

    /// All the width and height that is offered.
    static FlexibleFrame unbounded(Alignment alignment) {
        return {.maxWidth = everything, .maxHeight = everything, .alignment = alignment};
    }
    /// All the width that is offered; the height passes through.
    static FlexibleFrame unboundedWidth(Alignment alignment) {
        return {.maxWidth = everything, .alignment = alignment};
    }
    static constexpr double everything = std::numeric_limits<double>::infinity();
    bool operator==(const FlexibleFrame&) const = default;
};

/// The plain structs that a view is one of. Made by the functions below the class.
namespace nodes {

struct Nothing {
    bool operator==(const Nothing&) const = default;
};
struct Text {
    std::string content{};
    std::vector<std::string> shorter{};
    bool operator==(const Text&) const = default;
};
struct Image {
    std::string symbol{};
    bool operator==(const Image&) const = default;
};
struct Label {
    std::string title{};
    std::string symbol{};
    bool operator==(const Label&) const = default;
};
struct Spacer {
    double minLength{};
    bool operator==(const Spacer&) const = default;
};
struct Shape {
    enum class Kind { rectangle, circle } kind{Kind::rectangle};
    std::optional<Color> color{};  ///< none: the inherited foreground
    bool operator==(const Shape&) const = default;
};
struct PaintedPath {
    Path path{};
    Paint paint{};
    bool operator==(const PaintedPath&) const = default;
};
struct Group {
    std::vector<View> children;
};
struct Stack {
    Axis axis{};
    Along alignment{};
    double spacing{};
    std::vector<View> children;
};
struct Layers {
    Alignment alignment{};
    std::vector<View> children;
};
struct FixedSize {
    bool horizontal{};
    bool vertical{};
    bool operator==(const FixedSize&) const = default;
};
struct Padding {
    EdgeInsets insets{};
    bool operator==(const Padding&) const = default;
};
struct ContainerBackground {
    Color color{};
    bool operator==(const ContainerBackground&) const = default;
};
struct WidgetURL {
    std::string url{};
    bool operator==(const WidgetURL&) const = default;
};
using Modifier = std::variant<EnvironmentChange, FixedFrame, FlexibleFrame, FixedSize, Padding,
                              ContainerBackground, WidgetURL>;
struct Modified {
    Box<View> child;
    Modifier modifier{};
};
using SizeReader = Deferred<Size>;
using EnvironmentReader = Deferred<Environment>;

}  // namespace nodes

class View {
public:
    using Node =
        std::variant<nodes::Nothing, nodes::Text, nodes::Image, nodes::Label, nodes::Spacer,
                     nodes::Shape, nodes::PaintedPath, nodes::Group, nodes::Stack, nodes::Layers,
                     nodes::Modified, nodes::SizeReader, nodes::EnvironmentReader>;

    View() = default;
    explicit View(Node node) : node_(std::move(node)) {}
    template <ViewRecord Record>
    View(const Record& record) : View(record.body()) {}
    /// Shows `record.body(environment)`, made when the environment is known.
    template <RecordReading<Environment> Record>
    View(Record record) : node_(nodes::EnvironmentReader{std::move(record)}) {}
    /// Takes all the room that is offered and shows `record.body(size)` in its top left corner. The
    /// size it hands over is the one that is drawn: its edges lie on pixels.
    template <RecordReading<Size> Record>
    View(Record record) : node_(nodes::SizeReader{std::move(record)}) {}

    // Inherited by everything inside.
    View font(Font font) const;
    View weight(Weight weight) const;
    View monospacedDigits() const;
    View foreground(Color color) const;
    View lineLimit(int lines) const;  ///< at least 1
    View truncation(Truncation mode) const;
    View minimumScale(double factor) const;  ///< above 0, at most 1
    View opacity(double factor) const;       ///< 0 to 1, multiplies what is around
    View colorScheme(ColorScheme scheme) const;
    View redacted(RedactionReasons reasons) const;  ///< texts and symbols become blocks
    View unredacted() const;
    View accentable() const;  ///< puts the content into the accent group

    /// `Style` is an empty record with `View body(const View& icon, const View& title) const`.
    template <class Style>
    View labelStyle(Style) const {
        return changed(&Environment::labelStyle, {[](const View& icon, const View& title) {
            return View{Style{}.body(icon, title)};
        }});
    }

    // Layout.
    View frame(FixedFrame frame) const;
    View frame(FlexibleFrame frame) const;
    View fixedSize(bool horizontal, bool vertical) const;
    View padding(EdgeInsets insets) const;

    // For the widget as a whole; of several, the outermost counts.
    View containerBackground(Color color) const;
    View widgetURL(std::string url) const;

    /// Wraps this view as `wrapper.body(view)` says.
    template <class Wrapper>
    View modifier(const Wrapper& wrapper) const {
        return wrapper.body(*this);
    }

    Node take() && { return std::move(node_); }
    friend bool operator==(const View& a, const View& b);

private:
    template <class Value>
    View changed(Value Environment::*member, std::type_identity_t<Value> value) const {
        return modified(EnvironmentChange{Setting<Value>{member, std::move(value)}});
    }
    View modified(nodes::Modifier modifier) const;
    Node node_{};
};

// Leaves.
/// UTF-8, shown verbatim. Where it would be cut, the first that is not of what says it `shorter`,
/// or else the last of these; it is still read aloud as it is.
View Text(std::string content, std::vector<std::string> shorter = {});
View Image(std::string symbol);                     ///< one of the system's symbols, by name
View Label(std::string title, std::string symbol);  ///< arranged by the inherited label style
View Spacer(double minLength = 0);                  ///< takes what its stack has left
View Rectangle(std::optional<Color> color = {});    ///< no colour: the inherited foreground
View Circle(std::optional<Color> color = {});
View PaintedPath(Path path, Paint paint);  ///< coordinates from its frame's top left

/// What a container holds: views and records in braces, or a list. They are moved, where a
/// std::initializer_list would copy each with all that it holds.
class Children {
public:
    template <std::convertible_to<View>... Each>
    Children(Each&&... each) {
        views.reserve(sizeof...(each));
        (views.push_back(std::forward<Each>(each)), ...);
    }
    Children(std::vector<View> list) : views(std::move(list)) {}

    std::vector<View> views{};
};

// Containers. Spacing in points; a child that does not exist takes no spacing.
View Group(Children children);
View VStack(Alignment alignment, double spacing, Children children);
View HStack(Alignment alignment, double spacing, Children children);
View ZStack(Alignment alignment, Children children);

/// What `make` returns where the condition holds, else nothing.
template <class Make>
View when(bool condition, Make&& make) {
    return condition ? View{make()} : View{};
}

template <class Argument>
View Deferred<Argument>::content(const Argument& argument) const {
    return held_->content(argument);
}

template <class Argument>
template <class Record>
View Deferred<Argument>::Held<Record>::content(const Argument& argument) const {
    return record.body(argument);
}

}  // namespace tessary::views

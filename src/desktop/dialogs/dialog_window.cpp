#include "desktop/dialogs/dialog_window.h"

#include <algorithm>
#include <utility>

#include "desktop/glib/connect.h"
#include "desktop/windows/monitors.h"

namespace tessary::dialogs {

using namespace glib;
using namespace places;
using namespace windows;

namespace {

constexpr std::size_t mostLetters = 300;
constexpr int margin = 18, roomForFrame = 48;

}  // namespace

std::string shortened(const std::string& text) {
    const auto begin = text.c_str();
    const auto enough = static_cast<gssize>(std::min(text.size(), 4 * mostLetters));
    const auto letters = std::min(g_utf8_strlen(begin, enough), static_cast<glong>(mostLetters));
    std::string line{begin, const_cast<const char*>(g_utf8_offset_to_pointer(begin, letters))};
    std::ranges::replace_if(
        line, [](char letter) { return g_ascii_iscntrl(letter); }, ' ');
    return line;
}

GtkWidget* startLabel(const std::string& text, bool quiet) {
    const auto label = gtk_label_new(shortened(text).c_str());
    gtk_label_set_xalign(GTK_LABEL(label), 0);
    if (quiet) gtk_style_context_add_class(gtk_widget_get_style_context(label), "dim-label");
    return label;
}

void wrap(GtkWidget* label) {
    gtk_label_set_line_wrap(GTK_LABEL(label), TRUE);
    gtk_label_set_line_wrap_mode(GTK_LABEL(label), PANGO_WRAP_WORD_CHAR);
}

void empty(GtkWidget* container) {
    const auto destroy = [](GtkWidget* child, gpointer) { gtk_widget_destroy(child); };
    gtk_container_foreach(GTK_CONTAINER(container), destroy, nullptr);
}

DialogWindow::DialogWindow(Size size, std::function<void()> closed) : closed_{std::move(closed)} {
    const auto area = monitors().front().area;
    gtk_window_set_default_size(GTK_WINDOW(window_), std::min(size.width, area.width),
                                std::min(size.height, area.height - roomForFrame));
    gtk_window_set_icon_name(GTK_WINDOW(window_), "com.tessary.desktop.Widgets");
    gtk_window_set_position(GTK_WINDOW(window_), GTK_WIN_POS_CENTER);
    gtk_container_set_border_width(GTK_CONTAINER(box_), margin);
    gtk_container_add(GTK_CONTAINER(window_), box_);
    for (const auto label : {status_, hint_, command_}) {
        wrap(label);
        gtk_widget_set_no_show_all(label, TRUE);
        add(label, false);
    }
    gtk_label_set_selectable(GTK_LABEL(command_), TRUE);
    gtk_style_context_add_class(gtk_widget_get_style_context(command_), "monospace");
    connect(window_, "delete-event", [this] { return close(), true; });
    const auto pressed = [this](GdkEventKey* event) {
        const bool escapes = event->keyval == GDK_KEY_Escape;
        if (escapes) close();
        return escapes;
    };
    // After what has the focus, which may have a use for the key.
    connect(window_, "key-press-event", pressed, When::afterOthers);
}

DialogWindow::~DialogWindow() { gtk_widget_destroy(window_); }

void DialogWindow::setTitle(const std::string& title) {
    gtk_window_set_title(GTK_WINDOW(window_), shortened(title).c_str());
}

void DialogWindow::setStatus(const std::string& text) {
    said_ = text;
    showStatus();
}

void DialogWindow::setTrouble(const std::string& why) {
    trouble_ = why;
    showStatus();
}

void DialogWindow::showStatus() {
    const auto& text = trouble_.empty() ? said_ : trouble_;
    gtk_label_set_text(GTK_LABEL(status_), shortened(text).c_str());
    gtk_widget_set_visible(status_, !text.empty());
}

void DialogWindow::setHint(const std::string& words, const std::string& command) {
    gtk_label_set_text(GTK_LABEL(hint_), shortened(words).c_str());
    gtk_label_set_text(GTK_LABEL(command_), shortened(command).c_str());
    gtk_widget_set_visible(hint_, !words.empty());
    gtk_widget_set_visible(command_, !command.empty());
}

void DialogWindow::standBefore(const DialogWindow& other) {
    gtk_window_set_transient_for(GTK_WINDOW(window_), GTK_WINDOW(other.window_));
}

void DialogWindow::add(GtkWidget* widget, bool grows) {
    gtk_box_pack_start(GTK_BOX(box_), widget, grows, TRUE, 0);
}

void DialogWindow::present() {
    gtk_widget_show_all(box_);
    gtk_window_present(GTK_WINDOW(window_));
}

}  // namespace tessary::dialogs

// What the gallery and the editor have in common: a window with a quiet line for what there is to
// say, which Escape closes.
//
//     DialogWindow dialog{{420, 480}, [&] { owner.forget(); }};
//     dialog.setTitle("Choose");
//     dialog.add(list, true);
//     dialog.present();
//
// Closing only tells its owner; the window goes with this object, and all that is in it.
#pragma once

#include <functional>
#include <gtk/gtk.h>
#include <string>

#include "desktop/glib/timer.h"
#include "desktop/places/placed_widget.h"

namespace tessary::dialogs {

/// What a label shows of a text: one line of it, no longer than any window is wide.
std::string shortened(const std::string& text);

/// A label that begins where its row begins; a quiet one is dimmed.
GtkWidget* startLabel(const std::string& text, bool quiet);

/// Lets a label take as many lines as its text needs.
void wrap(GtkWidget* label);

/// Destroys what a container holds.
void empty(GtkWidget* container);

class DialogWindow {
public:
    /// As large as that or, where it has less room, as the screen. `closed` is called from the main
    /// loop, and may destroy this.
    DialogWindow(places::Size size, std::function<void()> closed);
    DialogWindow(const DialogWindow&) = delete;
    DialogWindow& operator=(const DialogWindow&) = delete;
    ~DialogWindow();

    void setTitle(const std::string& title);

    /// The quiet line at the top; none for an empty text.
    void setStatus(const std::string& text);

    /// What stands there instead, until it is empty again.
    void setTrouble(const std::string& why);

    /// Words below that end in what to type in a terminal, which can be copied; none for empty
    /// ones.
    void setHint(const std::string& words, const std::string& command);

    /// Keeps it in front of that window.
    void standBefore(const DialogWindow& other);

    /// Adds below all others; one of them may grow.
    void add(GtkWidget* widget, bool grows);

    /// Shows it in front of the other windows.
    void present();

    void close() { closing_.start({}, closed_); }

    GtkWidget* widget() const { return window_; }

private:
    void showStatus();

    std::function<void()> closed_;
    std::string said_{}, trouble_{};
    GtkWidget* window_{gtk_window_new(GTK_WINDOW_TOPLEVEL)};
    GtkWidget* box_{gtk_box_new(GTK_ORIENTATION_VERTICAL, 12)};
    GtkWidget* status_{startLabel("", true)};
    GtkWidget* hint_{startLabel("", false)};
    GtkWidget* command_{startLabel("", false)};
    glib::Timer closing_{};
};

}  // namespace tessary::dialogs

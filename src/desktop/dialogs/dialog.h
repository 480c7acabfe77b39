// A window beside the widgets, as whoever opens it sees it: it lasts as long as this object.
#pragma once

#include <string>

namespace tessary::dialogs {

class Dialog {
public:
    virtual ~Dialog() = default;

    /// Shows it in front of the other windows.
    virtual void present() = 0;

    /// Asks for everything anew that it shows.
    virtual void reload() = 0;

    /// Says why nothing is answered at the moment; an empty text takes that back.
    virtual void setTrouble(const std::string& why) = 0;
};

}  // namespace tessary::dialogs

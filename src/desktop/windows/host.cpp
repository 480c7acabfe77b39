#include "desktop/windows/host.h"

#include <gtk/gtk.h>

#include "desktop/client/link.h"
#include "desktop/glib/handles.h"

namespace tessary::windows {

using foundation::Result;

Result<void> openHost(const std::optional<std::string>& link, std::uint32_t time) {
    if (link && !client::isWidgetLink(*link))
        return foundation::Fault{*link + " is not opened: only tessary: links are"};
    const glib::Object<GAppInfo> program{g_app_info_get_default_for_uri_scheme("tessary")};
    if (!program)
        return foundation::Fault{"no program is installed that opens " +
                                 link.value_or("tessary: links")};
    const glib::Object<GdkAppLaunchContext> context{
        gdk_display_get_app_launch_context(gdk_display_get_default())};
    gdk_app_launch_context_set_timestamp(context.get(), time);
    glib::Fault fault;
    // Without a parent: on Wayland it would be exported, and a compositor ends whoever exports a
    // layer surface.
    const bool opened = link ? gtk_show_uri_on_window(nullptr, link->c_str(), time, fault.out())
                             : g_app_info_launch(program.get(), nullptr,
                                                 G_APP_LAUNCH_CONTEXT(context.get()), fault.out());
    if (opened) return {};
    return foundation::Fault{link.value_or("the program for tessary: links") +
                             " cannot be opened: " + fault.message()};
}

}  // namespace tessary::windows

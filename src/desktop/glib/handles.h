// Owners of what GLib hands out.
//
//     const Object<GFile> file{g_file_new_for_path(path)};     // g_object_unref at its end
//     const Text name{g_file_get_basename(file.get())};        // g_free
#pragma once

#include <glib-object.h>
#include <memory>
#include <string>

namespace tessary::glib {

struct Unref {
    void operator()(void* object) const { g_object_unref(object); }
};
template <class Type>
using Object = std::unique_ptr<Type, Unref>;

struct Free {
    void operator()(void* memory) const { g_free(memory); }
};
using Text = std::unique_ptr<char, Free>;

/// Where a call of GLib leaves its error: `call(..., fault.out())`.
class Fault {
public:
    Fault() = default;
    Fault(const Fault&) = delete;
    Fault& operator=(const Fault&) = delete;
    ~Fault() { g_clear_error(&error_); }

    GError** out() { return &error_; }
    explicit operator bool() const { return error_ != nullptr; }
    bool is(GQuark domain, int code) const { return g_error_matches(error_, domain, code); }
    std::string message() const { return error_ ? error_->message : ""; }

private:
    GError* error_{};
};

}  // namespace tessary::glib

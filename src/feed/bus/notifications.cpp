#include "feed/bus/notifications.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <systemd/sd-bus.h>

#include "platform/foundation/visible_text.h"

namespace tessary::bus {

using notices::Notice;

namespace {

constexpr const char* service = "org.freedesktop.Notifications";
constexpr const char* object = "/org/freedesktop/Notifications";
constexpr const char* application = "Tessary Widgets";
constexpr const char* desktopEntry = "com.tessary.desktop.Widgets";
constexpr std::uint64_t patience = 5'000'000;  // microseconds
constexpr std::size_t mostEntries = 100;

enum Urgency { normal = 1, critical = 2 };

struct MessageClosing {
    void operator()(sd_bus_message* message) const { ::sd_bus_message_unref(message); }
};
using Message = std::unique_ptr<sd_bus_message, MessageClosing>;

Message callOf(sd_bus* bus, const char* method) {
    sd_bus_message* message = nullptr;
    ::sd_bus_message_new_method_call(bus, &message, service, object, service, method);
    return Message{message};
}

/// What an answer says where it is a fault.
std::optional<std::string> faultOf(sd_bus_message* answer) {
    const sd_bus_error* const error = ::sd_bus_message_get_error(answer);
    if (error == nullptr) return std::nullopt;
    return foundation::visible(error->message != nullptr ? error->message : error->name);
}

}  // namespace

/// What the bus calls back.
struct Notifications::Ears {
    static Notifications& of(void* self) { return *static_cast<Notifications*>(self); }

    /// Sends a call whose answer is waited for before the next is sent.
    static void ask(Notifications& self, const Message& call, sd_bus_message_handler_t answered) {
        sd_bus_slot* slot = nullptr;
        const int error = ::sd_bus_call_async(self.connection_.get(), &slot, call.get(), answered,
                                              &self, patience);
        self.call_.reset(slot);
        if (error < 0) self.fail("the session bus does not take it");
    }

    static int abilities(sd_bus_message* answer, void* self, sd_bus_error*) {
        if (const auto fault = faultOf(answer)) return of(self).fail(*fault), 0;
        Abilities found;
        const char* name = nullptr;
        ::sd_bus_message_enter_container(answer, 'a', "s");
        while (::sd_bus_message_read(answer, "s", &name) > 0) {
            if (std::string_view{name} == "actions") found.actions = true;
            if (std::string_view{name} == "body-markup") found.markup = true;
        }
        of(self).abilities_ = found;
        of(self).call_.reset();
        of(self).advance();
        return 0;
    }

    static int sent(sd_bus_message* answer, void* self, sd_bus_error*) {
        if (const auto fault = faultOf(answer)) return of(self).fail(*fault), 0;
        std::uint32_t id = 0;
        if (::sd_bus_message_read(answer, "u", &id) < 0) return of(self).fail("no number"), 0;
        of(self).sent(id);
        return 0;
    }

    /// Comes before a click.
    static int given(sd_bus_message* signal, void* self, sd_bus_error*) {
        std::uint32_t id = 0;
        const char* token = nullptr;
        if (::sd_bus_message_read(signal, "us", &id, &token) < 0) return 0;
        const auto entry = of(self).find(id);
        if (entry != of(self).entries_.end()) entry->token = token;
        return 0;
    }

    static int invoked(sd_bus_message* signal, void* self, sd_bus_error*) {
        std::uint32_t id = 0;
        const char* action = nullptr;
        if (::sd_bus_message_read(signal, "us", &id, &action) < 0) return 0;
        const auto entry = of(self).find(id);
        if (entry != of(self).entries_.end() && std::string_view{action} == "default")
            of(self).outside_.open({entry->notice.link, entry->token});
        return 0;
    }

    static int closed(sd_bus_message* signal, void* self, sd_bus_error*) {
        std::uint32_t id = 0, reason = 0;
        if (::sd_bus_message_read(signal, "uu", &id, &reason) < 0) return 0;
        const auto entry = of(self).find(id);
        if (entry == of(self).entries_.end()) return 0;
        entry->id = 0;
        if (!entry->waits) of(self).entries_.erase(entry);
        return 0;
    }

    /// Somebody else shows notices now, or nobody.
    static int changed(sd_bus_message* signal, void* self, sd_bus_error*) {
        const char *name = nullptr, *before = nullptr, *after = nullptr;
        if (::sd_bus_message_read(signal, "sss", &name, &before, &after) < 0) return 0;
        of(self).forgetShown();
        if (*after != '\0') of(self).advance();
        return 0;
    }
};

Notifications::Entries::iterator Notifications::find(const std::string& matter) {
    return std::ranges::find_if(entries_,
                                [&](const Entry& entry) { return entry.notice.matter == matter; });
}

Notifications::Entries::iterator Notifications::find(std::uint32_t id) {
    return std::ranges::find_if(entries_,
                                [&](const Entry& entry) { return id != 0 && entry.id == id; });
}

void Notifications::show(const Notice& notice) {
    Entry entry{.notice = notice};
    if (const auto before = find(notice.matter); before != entries_.end()) {
        entry.id = before->id;
        entries_.erase(before);
    }
    entries_.push_back(std::move(entry));
    if (entries_.size() > mostEntries) entries_.pop_front();
    tend();
}

void Notifications::close(const std::string& matter) {
    const auto entry = find(matter);
    if (entry == entries_.end()) return;
    withdraw(entry->id);
    entries_.erase(entry);
}

void Notifications::tend() {
    if (std::ranges::none_of(entries_, &Entry::waits)) return;
    if (connection_.open()) listen();
    if (!connection_.isOpen()) return fail("there is no session bus");
    advance();
}

void Notifications::process() {
    if (!connection_.isOpen() || connection_.process()) return;
    for (Slot* const slot : {&call_, &given_, &invoked_, &closed_, &changed_}) slot->reset();
    forgetShown();
    if (std::ranges::any_of(entries_, &Entry::waits)) fail("the session bus has gone");
}

void Notifications::listen() {
    const auto hear = [&](const char* signal, sd_bus_message_handler_t handler) {
        sd_bus_slot* slot = nullptr;
        ::sd_bus_match_signal_async(connection_.get(), &slot, service, object, service, signal,
                                    handler, nullptr, this);
        return Slot{slot};
    };
    given_ = hear("ActivationToken", Ears::given);
    invoked_ = hear("ActionInvoked", Ears::invoked);
    closed_ = hear("NotificationClosed", Ears::closed);
    sd_bus_slot* slot = nullptr;
    ::sd_bus_add_match_async(connection_.get(), &slot,
                             "type='signal',sender='org.freedesktop.DBus',"
                             "interface='org.freedesktop.DBus',member='NameOwnerChanged',"
                             "arg0='org.freedesktop.Notifications'",
                             Ears::changed, nullptr, this);
    changed_.reset(slot);
}

/// One thing after the other, each once the last is answered.
void Notifications::advance() {
    if (call_ || !connection_.isOpen()) return;
    const auto next = std::ranges::find_if(entries_, &Entry::waits);
    if (next == entries_.end()) return;
    if (abilities_)
        send(*next);
    else
        askAbilities();
}

void Notifications::askAbilities() {
    Ears::ask(*this, callOf(connection_.get(), "GetCapabilities"), Ears::abilities);
}

void Notifications::send(const Entry& entry) {
    sending_ = entry.notice;
    const auto body = abilities_->markup ? notices::inMarkup(sending_.body) : sending_.body;
    const auto call = callOf(connection_.get(), "Notify");
    auto* const words = call.get();
    ::sd_bus_message_append(words, "susss", application, entry.id, desktopEntry,
                            sending_.title.c_str(), body.c_str());
    if (abilities_->actions && !sending_.link.empty())
        ::sd_bus_message_append(words, "as", 2, "default", "Open");
    else
        ::sd_bus_message_append(words, "as", 0);
    ::sd_bus_message_append(words, "a{sv}", 2, "urgency", "y",
                            sending_.isUrgent ? critical : normal, "desktop-entry", "s",
                            desktopEntry);
    ::sd_bus_message_append(words, "i", -1);
    Ears::ask(*this, call, Ears::sent);
}

void Notifications::withdraw(std::uint32_t id) {
    if (id != 0 && connection_.isOpen())
        ::sd_bus_call_method_async(connection_.get(), nullptr, service, object, service,
                                   "CloseNotification", nullptr, nullptr, "u", id);
}

/// What was sent may have changed since, or be over.
void Notifications::sent(std::uint32_t id) {
    call_.reset();
    outside_.tell("");
    const auto entry = find(sending_.matter);
    if (entry == entries_.end()) {
        withdraw(id);
    } else {
        entry->id = id;
        entry->waits = entry->notice != sending_;
    }
    advance();
}

/// Next time it is another's turn: who shows them may refuse this one.
void Notifications::fail(const std::string& why) {
    call_.reset();
    const auto entry = find(sending_.matter);
    if (entry != entries_.end()) entries_.splice(entries_.end(), entries_, entry);
    outside_.tell("a notification cannot be shown: " + why);
}

void Notifications::forgetShown() {
    abilities_.reset();
    std::erase_if(entries_, [](const Entry& entry) { return !entry.waits; });
    for (Entry& entry : entries_) entry.id = 0;
}

}  // namespace tessary::bus

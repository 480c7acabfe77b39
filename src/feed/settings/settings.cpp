#include "feed/settings/settings.h"

#include <algorithm>
#include <set>
#include <toml++/toml.h>

#include "feed/aws/endpoint.h"
#include "platform/foundation/nearest.h"
#include "platform/foundation/visible_text.h"

namespace tessary::settings {

using foundation::Fault;
using foundation::Result;
using foundation::visible;

namespace {

constexpr std::int64_t longestPeriod = 86'400;  // seconds

/// What is wrong with a file: the first that was found counts.
class Faults {
public:
    explicit Faults(std::string file) : file_(std::move(file)) {}

    void add(const toml::source_region& where, const std::string& words) {
        if (!first_) first_ = Fault{file_ + ":" + std::to_string(where.begin.line) + ": " + words};
    }
    const std::optional<Fault>& first() const { return first_; }

private:
    std::string file_;
    std::optional<Fault> first_{};
};

/// A table of the file, asked for each key that it may have and, at the end, for others.
class Table {
public:
    Table(const toml::table& table, std::string name, Faults& faults)
        : table_(table), name_(std::move(name)), faults_(faults) {}
    Table(const Table&) = delete;
    Table& operator=(const Table&) = delete;
    ~Table() {
        for (const auto& [key, value] : table_)
            if (std::ranges::find(known_, key.str()) == known_.end()) refuse(key);
        if (!missing_.empty())
            faults_.add(table_.source(), "expected the key '" + missing_ + "'" + name_);
    }

    void read(const char* key, std::string& text) {
        if (const auto* node = find(key)) take(*node, key, text, "a text that is not empty");
    }
    /// One that has to be there; it may be among the unknown ones, misspelt, which are told first.
    void require(const char* key, std::string& text) {
        if (!find(key) && missing_.empty()) missing_ = key;
        read(key, text);
    }
    void read(const char* key, bool& flag) {
        const auto* node = find(key);
        if (!node) return;
        if (const auto value = node->value_exact<bool>()) return void(flag = *value);
        expect(*node, key, "true or false");
    }
    void read(const char* key, std::int64_t& number, std::int64_t least, std::int64_t most) {
        const auto* node = find(key);
        if (!node) return;
        const auto value = node->value_exact<std::int64_t>();
        if (value && *value >= least && *value <= most) return void(number = *value);
        expect(*node, key,
               "a whole number from " + std::to_string(least) + " to " + std::to_string(most));
    }
    void read(const char* key, std::vector<std::string>& texts) {
        const auto* node = find(key);
        if (!node) return;
        texts.clear();
        const auto* list = node->as_array();
        if (!list) return expect(*node, key, "a list of texts");
        for (const auto& each : *list)
            take(each, key, texts.emplace_back(), "a list of texts that are not empty");
    }
    void read(const char* key, std::map<std::string, std::string>& texts) {
        const auto* node = find(key);
        if (!node) return;
        const auto* table = node->as_table();
        if (!table) return expect(*node, key, "a table of texts");
        for (const auto& [name, value] : *table)
            take(value, key, texts[std::string{name.str()}], "a table of texts that are not empty");
    }
    /// Each of [[key]].
    template <class Take>
    void each(const char* key, const Take& take) {
        const auto* node = find(key);
        if (!node) return;
        const auto* list = node->as_array();
        if (!list || !list->is_homogeneous<toml::table>())
            return expect(*node, key, "tables, each under [[" + std::string{key} + "]]");
        for (const auto& table : *list) {
            Table read{*table.as_table(), " in [[" + std::string{key} + "]]", faults_};
            take(read, table.source());
        }
    }
    void expect(const toml::node& node, std::string_view key, const std::string& expected) {
        faults_.add(node.source(), "'" + std::string{key} + "'" + name_ + ": expected " + expected);
    }

private:
    const toml::node* find(const char* key) {
        known_.emplace_back(key);
        return table_.get(key);
    }
    void take(const toml::node& node, const char* key, std::string& text, const char* expected) {
        const auto value = node.value_exact<std::string>();
        if (value && !value->empty()) return void(text = *value);
        expect(node, key, expected);
    }
    void refuse(const toml::key& key) {
        const std::string word{key.str()};
        faults_.add(key.source(), "unknown key '" + visible(word) + "'" + name_ +
                                      foundation::didYouMean(word, known_));
    }

    const toml::table& table_;
    std::string name_;
    Faults& faults_;
    std::vector<std::string> known_{};
    std::string missing_{};
};

/// Reads the file's tables into settings.
class Reader {
public:
    explicit Reader(Faults& faults) : faults_(faults) {}

    Settings read(const toml::table& file) {
        Table table{file, "", faults_};
        table.read("interval", settings_.interval, 10, 86'400);
        table.read("notify", settings_.notify);
        table.each("watch", [&](Table& each, const auto& at) { readWatch(each, at); });
        table.each("alarm", [&](Table& each, const auto& at) { readAlarm(each, at); });
        table.each("metric", [&](Table& each, const auto& at) { readMetric(each, at); });
        return std::move(settings_);
    }

private:
    using Place = toml::source_region;

    void readWatch(Table& table, const Place& at) {
        Watch& watch = settings_.watch.emplace_back();
        table.require("profile", watch.profile);
        table.read("regions", watch.regions);
        table.read("ignore", watch.ignore);
        for (const auto& region : watch.regions) expectRegion(region, at);
    }

    template <class Pin>
    void readWhere(Table& table, const Place& at, Pin& pin) {
        table.read("id", pin.id);
        table.read("label", pin.label);
        table.require("profile", pin.profile);
        table.require("region", pin.region);
        table.require("name", pin.name);
        if (!pin.region.empty()) expectRegion(pin.region, at);
    }
    void readAlarm(Table& table, const Place& at) {
        AlarmPin& pin = settings_.alarms.emplace_back();
        readWhere(table, at, pin);
        pin = completed(std::move(pin));
        expectNew(pin.id, alarmIds_, at);
    }
    void readMetric(Table& table, const Place& at) {
        MetricPin& pin = settings_.metrics.emplace_back();
        readWhere(table, at, pin);
        table.require("namespace", pin.namespace_);
        table.read("dimensions", pin.dimensions);
        table.read("statistic", pin.statistic);
        table.read("period", pin.period, 1, longestPeriod);
        if (!isPeriod(pin.period))
            faults_.add(at, "'period' in [[metric]]: expected 1, 5, 10, 20, 30 or whole minutes");
        pin = completed(std::move(pin));
        expectNew(pin.id, metricIds_, at);
    }
    void expectRegion(const std::string& word, const Place& at) {
        if (!aws::isRegion(word)) faults_.add(at, "'" + visible(word) + "' is no region");
    }
    void expectNew(const std::string& id, std::set<std::string>& ids, const Place& at) {
        if (!ids.insert(id).second) faults_.add(at, "the id '" + visible(id) + "' is given twice");
    }

    Faults& faults_;
    Settings settings_{};
    std::set<std::string> alarmIds_{}, metricIds_{};
};

}  // namespace

bool isPeriod(std::int64_t seconds) {
    constexpr std::int64_t minute = 60;
    const auto isShort = [&](std::int64_t each) { return each == seconds; };
    return std::ranges::any_of(std::initializer_list<std::int64_t>{1, 5, 10, 20, 30}, isShort) ||
           (seconds >= minute && seconds <= longestPeriod && seconds % minute == 0);
}

AlarmPin completed(AlarmPin pin) {
    if (pin.label.empty()) pin.label = pin.name;
    if (pin.id.empty()) pin.id = pin.profile + '/' + pin.region + '/' + pin.name;
    return pin;
}

MetricPin completed(MetricPin pin) {
    if (pin.label.empty()) pin.label = pin.name;
    if (!pin.id.empty()) return pin;
    pin.id = pin.profile + '/' + pin.region + '/' + pin.namespace_ + '/' + pin.name + '/' +
             pin.statistic;
    for (const auto& [name, value] : pin.dimensions) pin.id += '/' + name + '=' + value;
    return pin;
}

Result<Settings> parseSettings(std::string_view text, const std::string& file) {
    Faults faults{file};
    Settings settings;
    try {
        settings = Reader{faults}.read(toml::parse(text));
    } catch (const toml::parse_error& error) {
        faults.add(error.source(), visible(error.description()));
    }
    if (faults.first()) return *faults.first();
    return settings;
}

}  // namespace tessary::settings

// Requests from several threads at once, while the host application rewrites its files.
#include <atomic>
#include <chrono>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <thread>
#include <unistd.h>

#include "extension/renderer.h"
#include "platform/drawing/text_painter.h"
#include "shell/tessary_widgets.h"
#include "support/container.h"

namespace tessary::extension {
namespace {

namespace fs = std::filesystem;

/// A file of many parts, all of which bear the same number of its writing.
std::string alarmsOf(int writing) {
    const std::string mark = "#" + std::to_string(writing);
    std::string targets, alarms;
    for (int i = 0; i < 300; ++i) {
        const std::string comma = i == 0 ? "" : ",";
        targets += comma + R"({"profile":")" + mark +
                   R"(","region":"r","firing":1,"authExpired":false,"failed":false})";
        alarms += comma + R"({"name":")" + mark + R"(","profile":"p","region":"r","reason":")" +
                  mark + "\"}";
    }
    return R"({"schemaVersion":1,"state":"watching","updatedMs":1731772800000,"intervalSeconds":60,)"
           R"("firing":)" +
           std::to_string(writing) + R"(,"targets":[)" + targets + R"(],"topAlarms":[)" + alarms +
           "]}";
}

void overwrite(const fs::path& file, const std::string& bytes) {
    const system::Descriptor open{::open(file.c_str(), O_WRONLY | O_CREAT, 0600)};
    EXPECT_EQ(::pwrite(open.number(), bytes.data(), bytes.size(), 0), std::ssize(bytes));
    EXPECT_EQ(::ftruncate(open.number(), std::ssize(bytes)), 0);
}

/// Removed, replaced, rewritten in place, and in two steps, over and over.
void rewriteUntil(const std::atomic<bool>& isDone, const Container& container) {
    const fs::path file = container / "widgets/alarms.json";
    for (int writing = 1001; !isDone; ++writing) {
        const std::string bytes = alarmsOf(writing);
        if (writing % 7 == 0) fs::remove(file);
        if (writing % 3 == 0)
            fs::rename(container.write("beside", bytes), file);
        else
            overwrite(file, bytes);
        if (writing % 5 == 0) container.put("alarms", bytes);
        ::usleep(300);
    }
}

/// The number of the writing that an answer comes from, 0 for the state without a file; -1 where
/// parts of it, or of what is drawn of it, come from different ones.
int writingOf(const widgets::WidgetEntry& entry, Renderer& renderer) {
    foundation::JSONWriter json;
    entry.describe(json);
    const std::string& text = json.text();
    if (text == R"({"case":"unavailable"})") return 0;
    const auto at = text.find("\"firing\":") + 9;
    const std::string number = text.substr(at, text.find(',', at) - at);
    const std::string drawn =
        drawing::paintText(renderer.layOut(entry, {.family = widgets::WidgetFamily::systemMedium}));
    const auto isOfIt = [&](const std::string& marked) {
        for (auto mark = marked.find('#'); mark != marked.npos; mark = marked.find('#', mark + 1))
            if (marked.compare(mark + 1, number.size(), number) != 0) return false;
        return marked.find('#') != marked.npos;
    };
    return isOfIt(text) && isOfIt(drawn) ? std::stoi(number) : -1;
}

TEST(ConcurrentRequests, AnswerWithAWholeStateOrNone) {
    const Container container;
    container.put("alarms", alarmsOf(1000));
    std::atomic<bool> isDone{};
    std::thread writer{[&] { rewriteUntil(isDone, container); }};
    std::atomic<int> whole{};
    // Where the writer is held up between two files, many a request finds none.
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds{60};
    std::vector<std::thread> askers;
    for (int i = 0; i < 4; ++i)
        askers.emplace_back([&] {
            Renderer renderer;
            const auto widget = shell::TessaryWidgets{container.source()}.body().front();
            while (whole < 200 && std::chrono::steady_clock::now() < end) {
                const auto timeline = widget.answer(widgets::Request::timeline, {});
                const int first = writingOf(timeline.entries.front(), renderer);
                EXPECT_GE(first, 0);
                EXPECT_EQ(writingOf(timeline.entries.back(), renderer), first);
                whole += first > 0 ? 1 : 0;
            }
        });
    for (std::thread& asker : askers) asker.join();
    isDone = true;
    writer.join();
    EXPECT_GE(whole, 200);
}

TEST(ConcurrentRequests, ShareNothing) {
    const Container container;
    container.put("alarms", exampleAlarms);
    std::vector<std::string> answers(4);
    std::vector<std::thread> askers;
    for (std::string& answer : answers)
        askers.emplace_back([&] {
            Renderer renderer;
            const PictureOptions options{.locale = {"ja_JP"}};
            for (const auto& widget : shell::TessaryWidgets{container.source()}.body())
                for (const auto request : {widgets::Request::placeholder,
                                           widgets::Request::snapshot, widgets::Request::timeline})
                    for (const auto& entry : widget.answer(request, {.isPreview = true}).entries)
                        answer += renderer.paint(renderer.layOut(entry, options), widget.kind,
                                                 entry.date, options);
        });
    for (std::thread& asker : askers) asker.join();
    for (const std::string& answer : answers) EXPECT_EQ(answer, answers.front());
}

}  // namespace
}  // namespace tessary::extension

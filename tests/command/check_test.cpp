#include "command/check.h"

#include <gtest/gtest.h>
#include <pwd.h>
#include <sys/fsuid.h>
#include <unistd.h>

#include "command/check_report.h"
#include "support/container.h"
#include "support/golden.h"

namespace tessary::command {
namespace {

/// Three usable files, to be spoiled one by one.
class Check : public testing::Test {
protected:
    Check() { restore(); }
    void restore() const {
        carryOut("chmod -R u+rwx . && rm -rf * && mkdir widgets && cp $STORED/usable/* widgets");
        carryOut("echo '{\"TessaryAppGroup\":\"A1.com.tessary.desktop\"}' >info.json");
        container_.put("alarms", exampleAlarms);
    }
    /// By a shell, in the container.
    void carryOut(const std::string& command) const {
        const auto stored = std::filesystem::absolute(storedGolden("", __FILE__)).string();
        const auto call = "cd " + folder_ + " && STORED=" + stored + " && " + command;
        EXPECT_EQ(std::system(call.c_str()), 0) << command;
    }
    /// Of a file, what stands left of the bar by what stands right of it.
    void replace(const std::string& file, const std::string& spoiling) const {
        const auto bar = spoiling.find(" | ");
        std::string text = contents(container_ / ("widgets/" + file + ".json"));
        text.replace(text.find(spoiling.substr(0, bar)), bar, spoiling.substr(bar + 3));
        container_.put(file, unescaped(text));
    }
    /// In the container that is given by hand, or in that of the group where a file "installed" is;
    /// by nobody in particular where a file "denied" is.
    Inspection foundAt(double seconds) const {
        const auto isThere = [&](const std::string& name) {
            return std::filesystem::exists(container_ / name);
        };
        carryOut("find . ! -type l -exec touch -d 2174-01-01Z {} + || true");
        snapshot::Source source = container_.source();
        if (isThere("installed")) source.places.container.reset();
        if (isThere("widgets/within")) source.places.container = container_ / "widgets";
        source.places.dictionaries = {container_ / "info.json"};
        source.clock = [seconds] { return Date{seconds}; };
        if (isThere("denied")) ::setfsuid(65534);
        Inspection found = inspect(source);
        ::setfsuid(::geteuid());
        return found;
    }
    Inspection found() const { return foundAt(exampleNow.seconds); }

    static std::string statuses(const Inspection& inspection) {
        std::string text = "status " + std::to_string(exitStatus(inspection));
        text += ", strict " + std::to_string(exitStatus(inspection, {.notes = true}));
        return text + ", fresh " + std::to_string(exitStatus(inspection, {.stale = true})) + '\n';
    }
    /// The statuses and what is said, of all files or of one; the container's folder as /c.
    std::string said(const Inspection& inspection, const std::string& of = "") const {
        const auto lines = foundation::JSONWriter::Style::indented;
        const std::string owner = ::getpwuid(::geteuid())->pw_name;
        std::string all = replaced(asText(inspection, {"en_US", "UTC"}) + "\n" +
                                       (of.empty() ? asJSON(inspection, lines) : ""),
                                   folder_, "/c/");
        all = replaced(all, "belongs to " + owner + " ", "belongs to ana ");
        const auto start = of.empty() ? 0 : all.find("\n" + of) + 1;
        const auto end = of.empty() ? all.size() : all.find("\n\n", start) + 1;
        return statuses(inspection) + all.substr(start, end - start);
    }

    Container container_{};
    std::string folder_ = container_ / "";
};

TEST_F(Check, FindsTheFirstFault) {
    expectTranscript("faults.txt", [&](const std::string& spoiling) {
        restore();
        replace("alarms", spoiling);
        return said(found(), "alarms.json");
    });
}

TEST_F(Check, NotesWhatIsHardlyMeant) {
    expectTranscript("notes.txt", [&](const std::string& line) {
        restore();
        replace(line.substr(0, line.find(' ')), line.substr(line.find(' ') + 1));
        const Inspection inspection = found();
        std::string text = statuses(inspection);
        for (const FileFinding& file : inspection.files)
            for (const std::string& note : file.notes) text += note + '\n';
        return text;
    });
}

TEST_F(Check, EndsTheNotesOnAHostileFile) {
    std::string keys;
    for (int i = 0; i < 302; ++i) keys += "\"k" + std::to_string(i) + "\": 0, ";
    replace("alarms", "\"state\" | " + keys + "\"state\"");
    const std::vector<std::string> notes = found().files[0].notes;
    EXPECT_EQ(notes.size(), 301U);
    EXPECT_EQ(notes.back(), "2 further ones");
}

/// A case is the file that is told of, or "all", when, and what is done to the files before.
TEST_F(Check, SaysWhereTheWalkEndedAndWhatIsShown) {
    expectTranscript("inspections.txt", [&](const std::string& line) {
        double at = 0;
        std::string of, command;
        std::getline(std::istringstream{line} >> of >> at, command);
        restore();
        carryOut(command);
        return said(foundAt(at), of == "all" ? "" : of + ".json");
    });
}

TEST_F(Check, FindsTheSameUntilAFilesContentDiffers) {
    const Inspection first = found();
    EXPECT_TRUE(foundTheSame(first, foundAt(1731772841)));
    EXPECT_FALSE(foundTheSame(first, foundAt(1731772981)));
    carryOut("echo >>widgets/metrics.json");
    EXPECT_FALSE(foundTheSame(first, found()));
    restore();
    EXPECT_TRUE(foundTheSame(first, found()));
}

}  // namespace
}  // namespace tessary::command

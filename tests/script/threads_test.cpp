// The host of threads scripts, with a view that writes down what it is told.
#include "script/script_fixture.h"
#include "script/threads_host.h"

#include <QFile>
#include <QTemporaryDir>

namespace {

class RecordingView : public script::ThreadsView {
public:
    void clear() override { record(QStringLiteral("clear")); }
    void setColumns(const QString& list, const QStringList& titles) override {
        record(list + QStringLiteral(" columns ") + titles.join(u','));
    }
    void addQueue(const QString& list, const QString& title) override {
        record(list + QStringLiteral(" queue ") + title);
    }
    void addRow(const QString& list, const QStringList& columns) override {
        record(list + QStringLiteral(" row ") + columns.join(u','));
    }
    void setSortByNumber(const QString& column) override { record(QStringLiteral("sort ") + column); }
    void setColor(const QString& column, const QStringList& colors) override {
        record(QStringLiteral("color ") + column + u' ' + colors.join(u','));
    }
    bool isShown(const QString& list) const override { return list == u"Timers"; }
    void showMessage(const QString& title, const QString& text) override { record(title + u'|' + text); }

    std::string log;

private:
    void record(const QString& text) { log += text.toStdString() + "\n"; }
};

class Threads : public testing::Test {
protected:
    QString write(const char* text) const {
        const QString path = directory_.filePath(QStringLiteral("script.js"));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
        return path;
    }

    std::string refresh(const char* text, std::uint32_t maximum = 0) {
        RecordingView view;
        isDone_ = script::ThreadsScript(view, write(text), maximum, QString()).refresh();
        return view.log;
    }

    QTemporaryDir directory_;
    bool isDone_ = false;
};

TEST_F(Threads, InitFillsTheLists) {
    EXPECT_EQ(
        refresh("function init() { Threads.clear(); Threads.setColumns('Id', 'Name');"
                "Threads.setSortByNumber('Id'); Threads.setColor('Id', 'red', 'green', 'blue');"
                "Threads.newqueue('Ready'); Threads.add(1, 'idle', 4096); Threads.add(2, 'main', [1, 2]);"
                "Threads.setColumns2('Timers', 'At'); Threads.newqueue2('Timers', 'Soon');"
                "Threads.add2('Timers', 10, 0); Threads.add2('None', 1, 2);"
                "if (Threads.shown('Timers') && !Threads.shown('x')) Threads.newqueue('last') }"),
        "clear\n columns Id,Name\nsort Id\ncolor Id red,green,blue\n queue Ready\n row 1,idle\n row 2,main\n"
        "Timers columns At\nTimers queue Soon\nTimers row 10,0\n queue last\n");
    EXPECT_TRUE(isDone_);
}

TEST_F(Threads, WithoutInitTheColumnsAreTheUsualOnes) {
    EXPECT_EQ(refresh("var a"), " columns Id,Priority,State\n");
}

TEST_F(Threads, FaultsReachTheView) {
    const std::string path = write("").toStdString();
    EXPECT_EQ(refresh("\nnull.x()"),
              "Script runtime error|At line 2 of " + path + "\n\nSource line in error: null.x()\n");
    EXPECT_FALSE(isDone_);
    EXPECT_THAT(refresh("function init() { Threads.add(1, 5) }"), testing::HasSubstr(" row 1\n"));
    EXPECT_THAT(refresh("function init() { Threads.add(1, {}) }"),
                testing::HasSubstr("Script runtime error|At line 1"));
    EXPECT_THAT(
        refresh("function init() { Threads.add(1, 1); Threads.add(2, 2) }", 1),
        testing::EndsWith("Threads Window|Maximum thread number 1 to display has been reached. The project "
                          "property Thread Maximum sets this value.\n"));
    RecordingView view;
    EXPECT_FALSE(script::ThreadsScript(view, QStringLiteral("/no/such"), 0, QString()).refresh());
    EXPECT_EQ(view.log, "|Cannot open: /no/such\n columns Id,Priority,State\n");
}

TEST_F(Threads, GetregsGivesTheSavedRegisters) {
    RecordingView view;
    script::ThreadsScript threads(
        view, write("function getregs(id) { return id == 7 ? [id, '2', 4294967295] : 0 }"), 0, QString());
    EXPECT_EQ(threads.registersOf(7), (std::vector<std::int32_t>{7, 2, -1}));
    EXPECT_TRUE(threads.registersOf(8).empty());
}

}  // namespace

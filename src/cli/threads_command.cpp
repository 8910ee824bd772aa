#include "cli/threads_command.h"

#include "cli/output.h"
#include "script/threads_host.h"

#include <QFileInfo>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace cli {

namespace {

/// A list of the view: columns, and rows under their headings.
struct TextList {
    struct Row {
        bool isHeading;
        QStringList texts;
    };

    QString name;
    QStringList titles;
    std::vector<Row> rows;
    qsizetype sortColumn = -1;
};

/// The lists of a threads script as text.
class TextView : public script::ThreadsView {
public:
    TextView() { lists_.emplace_back(); }

    void clear() override {
        for (TextList& list : lists_) list.rows.clear();
    }
    void setColumns(const QString& list, const QStringList& titles) override {
        listNamed(list).titles = titles;
    }
    void addQueue(const QString& list, const QString& title) override {
        listNamed(list).rows.push_back({true, {title}});
    }
    void addRow(const QString& list, const QStringList& columns) override {
        listNamed(list).rows.push_back({false, columns});
    }
    void setSortByNumber(const QString& column) override {
        lists_.front().sortColumn = lists_.front().titles.indexOf(column);
    }
    void setColor(const QString&, const QStringList&) override {}  // text has no colours
    bool isShown(const QString& list) const override {
        return std::any_of(lists_.begin(), lists_.end(),
                           [&](const TextList& each) { return each.name == list; });
    }
    void showMessage(const QString& title, const QString& text) override {
        QString line = title.isEmpty() ? text : title + QStringLiteral(": ") + text;
        line.replace(QStringLiteral("\n\n"), QStringLiteral("; "));
        reportError(line.toStdString());
    }

    bool hasRows() const {
        return std::any_of(lists_.begin(), lists_.end(),
                           [](const TextList& list) { return !list.rows.empty(); });
    }
    void print(Output& output);

private:
    TextList& listNamed(const QString& name) {
        const auto found = std::find_if(lists_.begin(), lists_.end(),
                                        [&](const TextList& each) { return each.name == name; });
        if (found != lists_.end()) return *found;
        lists_.emplace_back().name = name;
        return lists_.back();
    }

    std::vector<TextList> lists_;
};

std::vector<qsizetype> columnWidths(const TextList& list) {
    std::vector<qsizetype> widths;
    const auto measure = [&](const QStringList& texts) {
        for (qsizetype i = 0; i < texts.size(); ++i) {
            const auto column = static_cast<std::size_t>(i);
            if (column == widths.size()) widths.push_back(0);
            widths[column] = std::max(widths[column], texts[i].size());
        }
    };
    measure(list.titles);
    for (const TextList::Row& row : list.rows)
        if (!row.isHeading) measure(row.texts);
    return widths;
}

/// Columns two blanks apart, without blanks at the end.
void printRow(const QStringList& texts, const std::vector<qsizetype>& widths, Output& output) {
    QString line;
    for (qsizetype i = 0; i < texts.size(); ++i) {
        if (i > 0) line += QStringLiteral("  ");
        line += i + 1 < texts.size() ? texts[i].leftJustified(widths[static_cast<std::size_t>(i)]) : texts[i];
    }
    output << line.toStdString() << "\n";
}

/// Sorts the rows of each queue by the numbers of the list's sort column.
void sortRows(TextList& list) {
    if (list.sortColumn < 0) return;
    const auto isLess = [&](const TextList::Row& a, const TextList::Row& b) {
        return a.texts.value(list.sortColumn).toDouble() < b.texts.value(list.sortColumn).toDouble();
    };
    for (auto first = list.rows.begin(); first != list.rows.end();) {
        const auto last =
            std::find_if(first, list.rows.end(), [](const TextList::Row& row) { return row.isHeading; });
        std::stable_sort(first, last, isLess);
        first = last == list.rows.end() ? last : last + 1;
    }
}

void TextView::print(Output& output) {
    for (TextList& list : lists_) {
        if (&list != &lists_.front()) output << "\n" << list.name.toStdString() << "\n";
        const std::vector<qsizetype> widths = columnWidths(list);
        if (!list.titles.isEmpty()) printRow(list.titles, widths, output);
        sortRows(list);
        for (const TextList::Row& row : list.rows)
            printRow(row.texts, row.isHeading ? std::vector<qsizetype>{} : widths, output);
    }
}

struct ThreadsOptions {
    std::string script;
    std::uint32_t maximum = 0;
};

int run(const ThreadsOptions& options) {
    TextView view;
    Output output;
    bool isDone = false;
    const QString path = QString::fromStdString(options.script);
    script::ThreadsScript threads(view, path, options.maximum, QFileInfo(path).path());
    try {
        isDone = threads.refresh();
    } catch (const script::ESFatalError& fault) {
        reportError(fault.message.toStdString());
    }
    if (isDone || view.hasRows()) view.print(output);
    return output.finish() && isDone ? 0 : 1;
}

}  // namespace

void addThreadsCommand(CLI::App& app, int& exitStatus) {
    const auto options = std::make_shared<ThreadsOptions>();
    CLI::App* command =
        app.add_subcommand("threads", "Runs a threads script of a real-time kernel and prints its lists");
    command->add_option("script", options->script, "The threads script")->type_name("SCRIPT")->required();
    command->add_option("--max", options->maximum, "Shows N threads at most")->type_name("N");
    command->callback([options, &exitStatus] { exitStatus = run(*options); });
}

}  // namespace cli

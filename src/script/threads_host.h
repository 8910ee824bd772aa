#pragma once

#include "script/context.h"

#include <QString>
#include <QStringList>

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace script {

/// Where a threads script shows the threads of a real-time kernel: lists with titled columns, rows in groups.
/// The main list has the empty name; a script makes up to 16 more.
class ThreadsView {
public:
    virtual ~ThreadsView() = default;

    virtual void clear() = 0;
    virtual void setColumns(const QString& list, const QStringList& titles) = 0;
    /// A heading under which the rows that follow stand.
    virtual void addQueue(const QString& list, const QString& title) = 0;
    virtual void addRow(const QString& list, const QStringList& columns) = 0;
    /// The column of the main list sorts by number.
    virtual void setSortByNumber(const QString& column) = 0;
    /// Three colour names for the rows, chosen by the column.
    virtual void setColor(const QString& column, const QStringList& colors) = 0;
    virtual bool isShown(const QString& list) const = 0;
    /// A message to the user under a title.
    virtual void showMessage(const QString& title, const QString& text) = 0;
};

/// A context for one evaluation: a script runs 1,000,000 instructions at most and then stops without a
/// message.
class ThreadsWindowESContext : public ESContext {
public:
    bool checkInterrupt() override {
        constexpr std::uint32_t budget = 1'000'000;
        return ++instructionCount < budget;
    }

    std::uint32_t instructionCount = 0;
};

/// The behaviour of the object "Threads", which fills a view. The view outlives the class.
class ThreadsWindowScriptObjectClass : public ESClass {
public:
    /// `maximum` threads at most in the main list; 0 for no limit.
    ThreadsWindowScriptObjectClass(ThreadsView& view, std::uint32_t maximum);

    /// Binds the object "Threads" in the context, which may not outlive this class.
    void bind(ESContext& context);
    void call(ESContext& context, ESObject* function, ESObject* thisObject, std::uint32_t argc,
              ESValue* argv) override;

    bool wasMaximumReached() const { return wasMaximumReached_; }
    /// What the last argument of "add" said about each row: a thread identifier, or its saved registers.
    struct Thread {
        std::int32_t id = 0;
        std::vector<std::int32_t> registers;
    };
    const std::vector<Thread>& threads() const { return threads_; }

private:
    void addThread(ESContext& context, std::uint32_t argc, const ESValue* argv);
    bool addList(const QString& name);

    ThreadsView& view_;
    std::uint32_t maximum_;
    bool wasMaximumReached_ = false;
    QStringList lists_{QString()};
    std::vector<Thread> threads_;
};

/// A threads script: a file of the script language that tells how to show the threads of a kernel.
class ThreadsScript {
public:
    /// `loadDirectory`, unless empty, is searched by the script's `load`.
    ThreadsScript(ThreadsView& view, QString path, std::uint32_t maximum, QString loadDirectory);

    /// Runs the script and its function `init`, which fills the view; without `init` the view gets default
    /// columns. False when the file could not be read or the script failed; the view was told.
    bool refresh();
    /// The registers that the script's `getregs` saved for a thread; empty when it has none.
    std::vector<std::int32_t> registersOf(std::int32_t thread);

private:
    std::optional<ESValue> run(ESContext& context, const QString& command);
    bool readFile();
    void setDefaultColumns();
    void reportException(ESContext& context, const ESValue& value);
    void prepare(ThreadsWindowESContext& context, ThreadsWindowScriptObjectClass& threads);

    ThreadsView& view_;
    QString path_;
    std::uint32_t maximum_;
    QString loadDirectory_;
    QString text_;
};

}  // namespace script

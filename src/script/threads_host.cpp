#include "script/threads_host.h"

#include "script/host_binding.h"
#include "script/native_array.h"
#include "script/native_global.h"

#include <QFile>

namespace script {

namespace {

enum Id : std::int32_t {
    Clear = 0,
    NewQueue = 1,
    Add = 2,
    SetColumns = 3,
    SetSortByNumber = 4,
    SetColor = 5,
    SetColumns2 = 6,
    NewQueue2 = 7,
    Add2 = 8,
    Shown = 9,
};

struct FunctionRow {
    const char* name;
    const char* fullName;
    std::uint32_t arity;
    std::int32_t id;
};

constexpr FunctionRow functions[] = {
    {"clear", "Threads.clear", 0, Clear},
    {"newqueue", "Threads.newqueue", 1, NewQueue},
    {"add", "Threads.add", 1, Add},
    {"setColumns", "Threads.setColumns", 1, SetColumns},
    {"setSortByNumber", "Threads.setSortByNumber", 1, SetSortByNumber},
    {"setColor", "Threads.setColor", 1, SetColor},
    {"setColumns2", "Threads.setColumns2", 1, SetColumns2},
    {"newqueue2", "Threads.newqueue2", 1, NewQueue2},
    {"add2", "Threads.add2", 1, Add2},
    {"shown", "Threads.shown", 1, Shown},
};

QStringList texts(ESContext& context, std::uint32_t from, std::uint32_t end, const ESValue* argv) {
    QStringList result;
    for (std::uint32_t i = from; i < end; ++i) result.append(context.toStringValue(argv[i]));
    return result;
}

QString property(ESContext& context, ESObject* object, const char16_t* name) {
    const ESResult text = context.describe(context.get(object, internAtom(QStringView(name))));
    return text.status == ESResult::Normal ? context.toStringValue(text.value) : QString();
}

}  // namespace

ThreadsWindowScriptObjectClass::ThreadsWindowScriptObjectClass(ThreadsView& view, std::uint32_t maximum)
    : ESClass(QStringLiteral("Object")), view_(view), maximum_(maximum) {}

void ThreadsWindowScriptObjectClass::bind(ESContext& context) {
    ESObject* threads = context.newObject(context.objectPrototype, this);
    context.defineProperty(context.global, DontEnumerate, internAtom(u"Threads"), ESValue(threads));
    for (const FunctionRow& row : functions)
        context.installBuiltin(threads, {row.name, row.fullName, row.arity, row.id},
                               context.functionPrototype, this);
}

/// A list beyond the main one; false when there are too many or it is unknown and cannot be made.
bool ThreadsWindowScriptObjectClass::addList(const QString& name) {
    constexpr qsizetype mostLists = 1 + 16;
    if (lists_.contains(name)) return true;
    if (lists_.size() == mostLists) return false;
    lists_.append(name);
    return true;
}

/// `argv` are the columns of a row of the main list and, last, its thread.
void ThreadsWindowScriptObjectClass::addThread(ESContext& context, std::uint32_t argc, const ESValue* argv) {
    if (maximum_ != 0 && threads_.size() >= maximum_) {
        wasMaximumReached_ = true;
        context.throwGeneralError(QStringLiteral("Maximum thread number to display reached"));
    }
    Thread thread;
    const ESValue& last = argv[argc - 1];
    if (last.isObject()) {
        std::uint32_t count = 0;
        const auto registers = arrayToInts(context, last, count);
        thread.registers.assign(registers.get(), registers.get() + count);
    } else {
        thread.id = context.toInt32(last);
    }
    view_.addRow(QString(), texts(context, 0, argc - 1, argv));
    threads_.push_back(std::move(thread));
}

void ThreadsWindowScriptObjectClass::call(ESContext& context, ESObject* function, ESObject*,
                                          std::uint32_t argc, ESValue* argv) {
    const auto text = [&](std::uint32_t i) { return i < argc ? context.toStringValue(argv[i]) : QString(); };
    ESValue result;
    switch (function->builtinId) {
        case Clear:
            view_.clear();
            threads_.clear();
            break;
        case NewQueue:
            view_.addQueue(QString(), text(0));
            break;
        case Add:
            addThread(context, argc, argv);
            break;
        case SetColumns:
            view_.setColumns(QString(), texts(context, 0, argc, argv));
            break;
        case SetSortByNumber:
            view_.setSortByNumber(text(0));
            break;
        case SetColor:
            view_.setColor(text(0), {text(1), text(2), text(3)});
            break;
        case SetColumns2:
            if (addList(text(0))) view_.setColumns(text(0), texts(context, 1, argc, argv));
            break;
        case NewQueue2:
            if (lists_.contains(text(0))) view_.addQueue(text(0), text(1));
            break;
        case Add2:
            if (lists_.contains(text(0))) view_.addRow(text(0), texts(context, 1, argc, argv));
            break;
        case Shown:
            result = ESValue::boolean(view_.isShown(text(0)));
            break;
        default:
            return;
    }
    argv[0] = result;
}

ThreadsScript::ThreadsScript(ThreadsView& view, QString path, std::uint32_t maximum, QString loadDirectory)
    : view_(view), path_(std::move(path)), maximum_(maximum), loadDirectory_(std::move(loadDirectory)) {}

bool ThreadsScript::readFile() {
    QFile file(path_);
    if (!file.open(QIODevice::ReadOnly)) {
        view_.showMessage(QString(), QStringLiteral("Cannot open: %1").arg(path_));
        return false;
    }
    text_ = QString::fromUtf8(file.readAll());
    return true;
}

void ThreadsScript::prepare(ThreadsWindowESContext& context, ThreadsWindowScriptObjectClass& threads) {
    initContext(context);
    threads.bind(context);
    if (!loadDirectory_.isEmpty()) context.globalClass->addLoadDirectory(loadDirectory_);
}

/// The value of the script's text with `command` behind it; nothing after an exception, which is reported.
std::optional<ESValue> ThreadsScript::run(ESContext& context, const QString& command) {
    const ESResult result = context.evaluate(path_, text_ + QLatin1Char('\n') + command);
    if (result.status == ESResult::Normal) return result.value;
    reportException(context, result.value);
    return std::nullopt;
}

void ThreadsScript::reportException(ESContext& context, const ESValue& value) {
    QString text;
    if (isError(context, value)) {
        ESObject* error = value.asObject();
        text = QStringLiteral("At line %1 of %2")
                   .arg(property(context, error, u"lineNumber"), property(context, error, u"fileName"));
        text += QStringLiteral("\n\nSource line in error: ") + property(context, error, u"sourceLine");
    } else {
        const ESResult described = context.describe(value);
        text = QStringLiteral("Uncaught exception: ") + context.toStringValue(described.value);
    }
    view_.showMessage(QStringLiteral("Script runtime error"), text);
}

void ThreadsScript::setDefaultColumns() {
    view_.setColumns(QString(), {QStringLiteral("Id"), QStringLiteral("Priority"), QStringLiteral("State")});
}

bool ThreadsScript::refresh() {
    if (path_.isEmpty()) return true;
    if (!readFile()) {
        setDefaultColumns();
        return false;
    }
    ThreadsWindowScriptObjectClass threads(view_, maximum_);
    ThreadsWindowESContext context;
    prepare(context, threads);
    std::optional<ESValue> value = run(context, QStringLiteral("init\n"));
    if (value.has_value() && value->isUndefined())
        setDefaultColumns();
    else if (value.has_value())
        value = run(context, QStringLiteral("init()\n"));
    if (threads.wasMaximumReached())
        view_.showMessage(QStringLiteral("Threads Window"),
                          QStringLiteral("Maximum thread number %1 to display has been reached. The project "
                                         "property Thread Maximum sets this value.")
                              .arg(maximum_));
    return value.has_value();
}

std::vector<std::int32_t> ThreadsScript::registersOf(std::int32_t thread) {
    if (path_.isEmpty() || !readFile()) return {};
    ThreadsWindowScriptObjectClass threads(view_, maximum_);
    ThreadsWindowESContext context;
    prepare(context, threads);
    const std::optional<ESValue> value = run(context, QStringLiteral("getregs(%1)\n").arg(thread));
    if (!value.has_value() || !value->isObject()) return {};
    try {
        std::uint32_t count = 0;
        const auto registers = arrayToInts(context, *value, count);
        return {registers.get(), registers.get() + count};
    } catch (const ESException& error) {
        reportException(context, error.value);
        return {};
    }
}

}  // namespace script

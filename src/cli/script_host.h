#pragma once

#include "cli/output.h"
#include "script/console_context.h"

#include <QString>

#include <cstdint>
#include <functional>

namespace cli {

/// The function `print(...)`: its arguments as text, separated by a blank, and a line feed.
class PrintClass : public script::ESClass {
public:
    explicit PrintClass(Output& output);

    void bind(script::ESContext& context);
    void call(script::ESContext& context, script::ESObject* function, script::ESObject* thisObject,
              std::uint32_t argc, script::ESValue* argv) override;

private:
    Output& output_;
};

/// A context that ends its scripts after a number of instructions in all.
class BudgetContext : public script::ESContext {
public:
    explicit BudgetContext(std::uint64_t budget) : budget_(budget) {}

    bool checkInterrupt() override { return !(isExhausted_ = ++asked_ > budget_); }
    bool isExhausted() const { return isExhausted_; }

private:
    std::uint64_t budget_;
    std::uint64_t asked_ = 0;
    bool isExhausted_ = false;
};

/// Evaluates `text` and prints the error on standard error, or, if `showsValue` says so after the run, the
/// value on `output`. False after an error.
bool evaluateText(script::ESContext& context, const QString& fileName, const QString& text,
                  const std::function<bool()>& showsValue, Output& output);

/// The console: reads lines from the terminal and evaluates each, until the input ends. Ctrl-C ends the
/// script that runs, or empties the line.
void runConsole(script::MyESContext2& context, Output& output);

}  // namespace cli

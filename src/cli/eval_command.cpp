#include "cli/eval_command.h"

#include "cli/output.h"
#include "expressions/parser_exception.h"
#include "expressions/simple_expression_parser.h"

#include <CLI/CLI.hpp>
#include <array>
#include <charconv>
#include <memory>
#include <string>

namespace cli {

namespace {

using expressions::Value;
using expressions::ValueKind;

struct EvalOptions {
    std::string expression;
    bool tree = false;
};

/// The shortest form that reads back the same.
std::string floatText(double number) {
    std::array<char, 32> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    return {digits.data(), end};
}

std::string valueText(const Value& value) {
    switch (value.kind) {
        case ValueKind::Boolean:
            return value.toByte() != 0 ? "true" : "false";
        case ValueKind::Signed:
            return std::to_string(value.toSigned());
        case ValueKind::Unsigned:
            return std::to_string(value.toUnsigned());
        case ValueKind::String:
            return value.text.toStdString();
        case ValueKind::Float:
            return floatText(value.toDouble());
        default:
            return "";
    }
}

/// The value or the tree of an expression as text; nothing for an empty expression.
std::string evaluate(const EvalOptions& options, qsizetype& end) {
    expressions::SimpleExpressionParser parser;
    const QString text = QString::fromStdString(options.expression);
    if (text.isEmpty()) return "";
    const expressions::ExpressionPtr tree = parser.parseTree(text, &end);
    return options.tree ? tree->toString().toStdString() : valueText(tree->evaluate());
}

int run(const EvalOptions& options) {
    try {
        qsizetype end = 0;
        Output output;
        output << evaluate(options, end) << "\n";
        const QString rest = QString::fromStdString(options.expression).sliced(end).trimmed();
        if (!rest.isEmpty())
            reportWarning("\"" + rest.toStdString() + "\" stands behind the expression and is not looked at");
        return output.finish() ? 0 : 1;
    } catch (const expressions::ParserException& failure) {
        reportError(failure.message().toStdString());
        return 1;
    }
}

}  // namespace

void addEvalCommand(CLI::App& app, int& exitStatus) {
    const auto options = std::make_shared<EvalOptions>();
    CLI::App* command = app.add_subcommand("eval", "Evaluates a C-like expression and prints its value");
    command->add_option("EXPRESSION", options->expression, "The expression")->type_name("")->required();
    command->add_flag("--tree", options->tree, "Prints the expression's own text form instead");
    command->callback([options, &exitStatus] { exitStatus = run(*options); });
}

}  // namespace cli

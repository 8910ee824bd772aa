#include "expressions/lexer.h"

#include "expressions/integer_value.h"
#include "expressions/limits.h"
#include "expressions/parser_exception.h"

#include <algorithm>

namespace expressions {

void Lexer::addToken(const QString& pattern, Token token, std::int32_t precedence) {
    rules_.push_back({pattern, token, precedence, 0});
    compiled_.reset();
}

void Lexer::setInput(const QString& text) {
    state_ = State();
    push(text);
    next();
}

void Lexer::next() {
    for (;;) {
        const State::Input& input = state_.inputs.back();
        if (input.position < input.text.size()) {
            state_.token = scan();
            if (state_.token != Token::Space) return;
        } else if (state_.inputs.size() == 1) {
            state_.token = Token::Eol;
            state_.precedence = noOperator;
            return;
        } else {
            state_.inputs.pop_back();
        }
    }
}

qsizetype Lexer::position() const {
    return state_.inputs.empty() ? 0 : state_.inputs.back().position;
}

std::int64_t Lexer::integerValue() const {
    return expressions::integerValue(state_.text);
}

Token Lexer::scan() {
    // A name that leads back to itself is taken for a plain identifier after so many replacements.
    constexpr int maxReplacements = 100;
    for (int depth = 0;; ++depth) {
        const Rule& rule = match(state_.inputs.back());
        state_.precedence = rule.precedence;
        if (rule.token != Token::Ident) return rule.token;
        const QString replacement = lookup(state_.text);
        if (replacement.isEmpty() || replacement == state_.text || depth == maxReplacements)
            return rule.token;
        push(replacement);
    }
}

const Lexer::Rule& Lexer::match(State::Input& input) {
    if (!compiled_) compile();
    const QRegularExpressionMatch found =
        compiled_->match(input.text, input.position, QRegularExpression::NormalMatch, input.options);
    const auto rule = std::find_if(rules_.begin(), rules_.end(), [&found](const Rule& candidate) {
        return found.capturedStart(candidate.group) >= 0;
    });
    if (rule == rules_.end() || found.capturedLength(0) == 0)
        throw ParserException(QStringLiteral("unrecognised token: ") + input.text.sliced(input.position));
    state_.text = found.captured(0);
    input.position = found.capturedEnd(0);
    return *rule;
}

void Lexer::push(const QString& text) {
    if (state_.inputs.size() > maxNesting) throw ParserException(QStringLiteral("input nested too deeply"));
    QRegularExpression::MatchOptions options = QRegularExpression::AnchorAtOffsetMatchOption;
    // The library otherwise checks the whole text again for each token.
    if (text.isValidUtf16()) options |= QRegularExpression::DontCheckSubjectStringMatchOption;
    state_.inputs.push_back({text, 0, options});
}

void Lexer::compile() {
    // Alternatives are tried in order, so the one expression picks the rule that trying each would pick.
    QStringList alternatives;
    int group = 1;
    for (Rule& rule : rules_) {
        rule.group = group;
        group += 1 + QRegularExpression(rule.pattern).captureCount();
        alternatives.append(u'(' + rule.pattern + u')');
    }
    compiled_.emplace(alternatives.join(u'|'), QRegularExpression::UseUnicodePropertiesOption);
    compiled_->optimize();
}

}  // namespace expressions

#pragma once

#include "expressions/expression.h"
#include "expressions/token_reader.h"
#include "expressions/type.h"
#include "expressions/type_reader.h"

#include <cstddef>
#include <vector>

namespace expressions {

/// Reads one expression by operator precedence (Dijkstra's shunting yard): what is open and waits for an
/// operand stands on a stack of its own, so depth costs no native stack. All binary operators are
/// left-associative.
class ExpressionReader {
public:
    /// The lexer stands at the first token of the text.
    ExpressionReader(ExpressionParser& parser, Lexer& lexer)
        : parser_(parser), tokens_(parser, lexer), types_(parser, tokens_) {}

    ExpressionPtr read();
    /// Where the expression ended.
    qsizetype endPosition() const { return tokens_.endPosition(); }

private:
    /// What waits for an operand.
    enum class Construct {
        Binary,       ///< first OPERATOR
        Prefix,       ///< OPERATOR
        Cast,         ///< ( type )
        Argument,     ///< first ( arguments
        Group,        ///< (
        Sizeof,       ///< sizeof
        SizeofGroup,  ///< sizeof (
        Index,        ///< first [
        SliceStop,    ///< first [ second :
        ArraySize,    ///< ( type [
    };

    struct Pending {
        Construct construct;
        Token token = Token::Eol;
        std::int32_t precedence = 0;
        ExpressionPtr first = nullptr;
        ExpressionPtr second = nullptr;
        std::vector<ExpressionPtr> arguments = {};
        TypePtr type = nullptr;
        std::size_t typeDepth = 0;
    };

    // These give a finished expression, or null when something was opened that waits for an operand.
    ExpressionPtr readOperand();
    ExpressionPtr readName();
    ExpressionPtr readSizeof();
    ExpressionPtr readPostfix(ExpressionPtr expression);
    ExpressionPtr readArgument(Pending call);
    ExpressionPtr complete(ExpressionPtr expression);
    ExpressionPtr close(Pending pending, ExpressionPtr expression);

    ExpressionPtr readAddressofLine();
    ExpressionPtr readIdentifier();
    ExpressionPtr readMember(ExpressionPtr expression);
    void openParenthesis();
    void continueDeclarator(TypePtr type, std::size_t depth);

    bool isPostfix() const;
    void open(Pending pending);
    Pending pop();

    ExpressionParser& parser_;
    TokenReader tokens_;
    TypeReader types_;
    std::vector<Pending> pending_;
    std::size_t nesting_ = 0;  // how many of them are more than a binary operator
};

}  // namespace expressions

#include "expressions/expression_reader.h"

#include "expressions/expression_parser.h"
#include "expressions/leaf_expressions.h"
#include "expressions/limits.h"
#include "expressions/operators.h"
#include "expressions/parser_exception.h"
#include "expressions/target_expressions.h"

#include <utility>

namespace expressions {

namespace {

void checkNesting(std::size_t depth) {
    if (depth > maxNesting) throw ParserException(QStringLiteral("expression nested too deeply"));
}

}  // namespace

ExpressionPtr ExpressionReader::read() {
    for (;;) {
        ExpressionPtr expression = readOperand();
        while (expression) {
            if (isPostfix()) {
                expression = readPostfix(std::move(expression));
            } else if (pending_.empty() && tokens_.precedence() == Lexer::noOperator) {
                return expression;
            } else {
                expression = complete(std::move(expression));
            }
        }
    }
}

ExpressionPtr ExpressionReader::readOperand() {
    ExpressionPtr constant;
    switch (tokens_.token()) {
        case Token::Integer:
        case Token::HexInteger:
        case Token::BinInteger:
            constant = makeNode<IntegerConstantExpression>(parser_, tokens_.integerValue());
            break;
        case Token::Float:
            // Unlike strtod this does not depend on the locale.
            constant = makeNode<FloatConstantExpression>(parser_, tokens_.text().toUtf8().toDouble());
            break;
        case Token::String:
            constant = makeNode<StringConstantExpression>(parser_, tokens_.unquoted());
            break;
        case Token::Register:
            constant = makeNode<RegisterExpression>(parser_, tokens_.text().sliced(1));
            break;
        case Token::Ident:
        case Token::ColonColon:
            return readName();
        case Token::LParen:
            openParenthesis();
            return nullptr;
        default:
            if (!isPrefixOperator(tokens_.token())) tokens_.failUnexpected();
            open({.construct = Construct::Prefix, .token = tokens_.token()});
            tokens_.advance();
            return nullptr;
    }
    tokens_.advance();
    return constant;
}

ExpressionPtr ExpressionReader::readName() {
    if (tokens_.token() == Token::ColonColon) {
        tokens_.advance();
        return makeNode<ScopedIdentifierExpression>(parser_, tokens_.readScopedNames(tokens_.readName()));
    }
    if (tokens_.text() == u"sizeof") return readSizeof();
    if (tokens_.text() == u"addressof") return readAddressofLine();
    return readIdentifier();
}

ExpressionPtr ExpressionReader::readIdentifier() {
    const QString name = tokens_.readName();
    if (tokens_.token() != Token::ColonColon) return makeNode<IdentifierExpression>(parser_, name);
    return makeNode<ScopedIdentifierExpression>(parser_, tokens_.readScopedNames(name));
}

ExpressionPtr ExpressionReader::readSizeof() {
    tokens_.advance();
    if (tokens_.token() != Token::LParen) {
        open({.construct = Construct::Sizeof});
        return nullptr;
    }
    tokens_.advance();
    if (TypePtr type = types_.readType()) {
        tokens_.expect(Token::RParen, "')' expected");
        return makeNode<SizeofExpression>(parser_, std::move(type));
    }
    open({.construct = Construct::SizeofGroup});
    return nullptr;
}

ExpressionPtr ExpressionReader::readAddressofLine() {
    tokens_.advance();
    tokens_.expect(Token::LParen, "'(' expected");
    const bool isString = tokens_.token() == Token::String;
    const QString file = isString ? tokens_.unquoted() : QString();
    tokens_.expect(Token::String, "string expected");
    tokens_.expect(Token::Comma, "',' expected");
    const auto line = static_cast<std::int32_t>(tokens_.integerValue());
    tokens_.expect(Token::Integer, "int expected");
    tokens_.expect(Token::RParen, "')' expected");
    return makeNode<AddressofLineExpression>(parser_, file, line);
}

void ExpressionReader::openParenthesis() {
    tokens_.advance();
    TypePtr type = tokens_.token() == Token::Ident ? types_.readCastType() : nullptr;
    if (type)
        continueDeclarator(std::move(type), 0);
    else
        open({.construct = Construct::Group});
}

void ExpressionReader::continueDeclarator(TypePtr type, std::size_t depth) {
    for (;; checkNesting(++depth)) {
        switch (tokens_.token()) {
            case Token::Star:
                type = makeNode<PointerType>(std::move(type));
                tokens_.advance();
                break;
            case Token::ColonColon: {
                auto* user = dynamic_cast<UserType*>(type.get());
                if (!user) throw ParserException(QStringLiteral("UserType expected"));
                user->name = tokens_.readScopedNames(user->name).join(QStringLiteral("::"));
                break;
            }
            case Token::LBrack:
                open({.construct = Construct::ArraySize, .type = std::move(type), .typeDepth = depth});
                tokens_.advance();
                return;
            default:
                tokens_.expect(Token::RParen, "')' expected");
                open({.construct = Construct::Cast, .type = std::move(type)});
                return;
        }
    }
}

bool ExpressionReader::isPostfix() const {
    switch (tokens_.token()) {
        case Token::LBrack:
        case Token::Dot:
        case Token::PointsAt:
        case Token::ColonColon:
        case Token::Increment:
        case Token::Decrement:
        case Token::LParen:
            return true;
        default:
            return false;
    }
}

ExpressionPtr ExpressionReader::readPostfix(ExpressionPtr expression) {
    const Token token = tokens_.token();
    tokens_.advance();
    switch (token) {
        case Token::LBrack:
            open({.construct = Construct::Index, .first = std::move(expression)});
            return nullptr;
        case Token::LParen:
            return readArgument({.construct = Construct::Argument, .first = std::move(expression)});
        case Token::Increment:
            return makeIncrement(parser_, std::move(expression));
        case Token::Decrement:
            return makeDecrement(parser_, std::move(expression));
        case Token::ColonColon:
            return makeNode<DotExpression>(parser_, std::move(expression), readIdentifier());
        default:
            return readMember(std::move(expression));
    }
}

ExpressionPtr ExpressionReader::readMember(ExpressionPtr expression) {
    if (tokens_.token() != Token::Star)
        return makeNode<DotExpression>(parser_, std::move(expression), readIdentifier());
    tokens_.advance();
    return makeNode<PtrToMemberExpression>(parser_, std::move(expression), readIdentifier());
}

/// Goes on in the arguments of a call, each of which ends where a unary expression does.
ExpressionPtr ExpressionReader::readArgument(Pending call) {
    if (tokens_.token() != Token::RParen) {
        open(std::move(call));
        return nullptr;
    }
    tokens_.advance();
    return makeNode<CallExpression>(parser_, std::move(call.first), std::move(call.arguments));
}

/// Hands a finished expression to what waits for it, or makes it the left side of the operator behind it.
ExpressionPtr ExpressionReader::complete(ExpressionPtr expression) {
    const Construct waiting = pending_.empty() ? Construct::Group : pending_.back().construct;
    switch (waiting) {
        case Construct::Prefix:
            return makePrefix(parser_, pop().token, std::move(expression));
        case Construct::Cast:
            return makeNode<CastExpression>(parser_, pop().type, std::move(expression));
        case Construct::Argument: {
            Pending call = pop();
            call.arguments.push_back(std::move(expression));
            if (tokens_.token() == Token::Comma) tokens_.advance();
            return readArgument(std::move(call));
        }
        default:
            break;
    }
    const std::int32_t precedence = tokens_.precedence();
    const bool isOperator = precedence != Lexer::noOperator;
    if (waiting == Construct::Binary && (!isOperator || pending_.back().precedence >= precedence)) {
        Pending binary = pop();
        return makeBinary(parser_, binary.token, std::move(binary.first), std::move(expression));
    }
    if (!isOperator) return close(pop(), std::move(expression));
    open({.construct = Construct::Binary,
          .token = tokens_.token(),
          .precedence = precedence,
          .first = std::move(expression)});
    tokens_.advance();
    return nullptr;
}

/// Ends a construct that holds a whole expression.
ExpressionPtr ExpressionReader::close(Pending pending, ExpressionPtr expression) {
    switch (pending.construct) {
        case Construct::Sizeof:
            return makeNode<SizeofExpression>(parser_, std::move(expression));
        case Construct::SizeofGroup:
            tokens_.expect(Token::RParen, "')' expected");
            return makeNode<SizeofExpression>(parser_, std::move(expression));
        case Construct::Index:
            if (tokens_.token() == Token::Colon) {
                tokens_.advance();
                open({.construct = Construct::SliceStop,
                      .first = std::move(pending.first),
                      .second = std::move(expression)});
                return nullptr;
            }
            tokens_.expect(Token::RBrack, "expected ']'");
            return makeNode<LeftSquareBracketExpression>(parser_, std::move(pending.first),
                                                         std::move(expression));
        case Construct::SliceStop:
            tokens_.expect(Token::RBrack, "expected ']'");
            return makeNode<ArraySliceExpression>(parser_, std::move(pending.first),
                                                  std::move(pending.second), std::move(expression));
        case Construct::ArraySize:
            tokens_.expect(Token::RBrack, "']' expected");
            continueDeclarator(makeNode<ArrayType>(std::move(pending.type), std::move(expression)),
                               pending.typeDepth + 1);
            return nullptr;
        default:
            tokens_.expect(Token::RParen, "')' expected");
            return expression;
    }
}

void ExpressionReader::open(Pending pending) {
    if (pending.construct != Construct::Binary) checkNesting(++nesting_);
    pending_.push_back(std::move(pending));
}

ExpressionReader::Pending ExpressionReader::pop() {
    Pending pending = std::move(pending_.back());
    pending_.pop_back();
    if (pending.construct != Construct::Binary) --nesting_;
    return pending;
}

}  // namespace expressions

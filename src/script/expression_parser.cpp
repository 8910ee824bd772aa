#include "script/atom.h"
#include "script/context.h"
#include "script/parser_support.h"

#include <span>

namespace script {

namespace {

/// Binary operators by precedence, loosest row first.
constexpr int bitOrRow[] = {'|'};
constexpr int bitXorRow[] = {'^'};
constexpr int bitAndRow[] = {'&'};
constexpr int equalityRow[] = {TokenEqual, TokenNotEqual};
constexpr int relationRow[] = {'<', '>', TokenLessEqual, TokenGreaterEqual};
constexpr int shiftRow[] = {TokenShl, TokenShr, TokenUShr};
constexpr int sumRow[] = {'+', '-'};
constexpr int productRow[] = {'*', '/', '%'};
constexpr std::span<const int> precedence[] = {bitOrRow,    bitXorRow, bitAndRow, equalityRow,
                                               relationRow, shiftRow,  sumRow,    productRow};

constexpr int assignments[] = {'=',
                               TokenMulAssign,
                               TokenDivAssign,
                               TokenModAssign,
                               TokenAddAssign,
                               TokenSubAssign,
                               TokenShlAssign,
                               TokenShrAssign,
                               TokenUShrAssign,
                               TokenAndAssign,
                               TokenXorAssign,
                               TokenOrAssign};

constexpr int prefixes[] = {TokenDelete, TokenVoid, TokenTypeof, TokenIncrement, TokenDecrement, '+',
                            '-',         '~',       '!'};

bool isIn(std::span<const int> tokens, int token) {
    for (const int candidate : tokens)
        if (candidate == token) return true;
    return false;
}

}  // namespace

ESNode* ESParser::parseExpression() {
    ESNode* left = parseAssignment();
    while (accept(',')) left = newNode(KindPair, left, parseAssignment());
    return left;
}

ESNode* ESParser::parseAssignment() {
    const Nesting nesting(*this);
    ESNode* left = parseLogicalOr();
    if (accept('?')) {
        ESNode* first = parseAssignment();
        expect(':');
        left = newNode(KindConditional, left, first, parseAssignment());
    }
    const int token = peekToken();
    if (!isIn(assignments, token)) return left;
    nextToken();
    return markEffects(newNode(token, left, parseAssignment()));
}

ESNode* ESParser::parseLogicalOr() {
    ESNode* left = parseLogicalAnd();
    while (accept(TokenOrOr)) left = newNode(TokenOrOr, left, parseLogicalAnd());
    return left;
}

ESNode* ESParser::parseLogicalAnd() {
    ESNode* left = parseBinary(0);
    while (accept(TokenAndAnd)) left = newNode(TokenAndAnd, left, parseBinary(0));
    return left;
}

ESNode* ESParser::parseBinary(int looseness) {
    if (looseness == static_cast<int>(std::size(precedence))) return parseUnary();
    ESNode* left = parseBinary(looseness + 1);
    while (isIn(precedence[looseness], peekToken())) {
        const int token = nextToken();
        left = newNode(token, left, parseBinary(looseness + 1));
    }
    return left;
}

ESNode* ESParser::parseUnary() {
    if (!isIn(prefixes, peekToken())) return parsePostfix();
    const Nesting nesting(*this);
    const int token = nextToken();
    const std::uint32_t begin = line();
    const int kind = token == '-' ? int{KindMinus} : token == '+' ? int{KindPlus} : token;
    ESNode* node = newNode(kind, parseUnary());
    node->line = begin;
    const bool acts = token == TokenDelete || token == TokenIncrement || token == TokenDecrement;
    return acts ? markEffects(node) : node;
}

ESNode* ESParser::parsePostfix() {
    ESNode* operand = parseMember();
    const int token = peekToken();
    if (newlineBefore()) return operand;
    if (token != TokenIncrement && token != TokenDecrement) return operand;
    nextToken();
    return markEffects(newNode(token == TokenIncrement ? KindPostIncrement : KindPostDecrement, operand));
}

ESNode* ESParser::parseMember() {
    ESNode* node = peekToken() == TokenNew ? parseNew() : parsePrimary();
    return parseSuffixes(node, true);
}

/// `new` takes the members behind it and the first list of arguments.
ESNode* ESParser::parseNew() {
    const Nesting nesting(*this);
    nextToken();
    ESNode* node = newNode(TokenNew);
    ESNode* constructor = peekToken() == TokenNew ? parseNew() : parsePrimary();
    node->child[0] = parseSuffixes(constructor, false);
    if (peekToken() == '(') {
        node->kind = KindNewCall;
        node->child[1] = parseArguments();
    }
    return markEffects(node);
}

ESNode* ESParser::parseSuffixes(ESNode* node, bool takesCalls) {
    for (;;) {
        if (accept('.')) {
            expect(TokenIdentifier);
            node = newNode(KindMember, node);
            node->name = tokenAtom();
        } else if (accept('[')) {
            node = parseElementAccess(node);
        } else if (takesCalls && peekToken() == '(') {
            node = markEffects(newNode(KindCall, node));
            node->child[1] = parseArguments();
        } else {
            return node;
        }
    }
}

ESNode* ESParser::parseArguments() {
    expect('(');
    NodeList arguments;
    if (accept(')')) return nullptr;
    do {
        arguments.append(parseAssignment());
    } while (accept(','));
    expect(')');
    return arguments.first();
}

/// A constant key makes a member by name.
ESNode* ESParser::parseElementAccess(ESNode* object) {
    ESNode* key = parseExpression();
    expect(']');
    if (key->kind != TokenString && key->kind != TokenNumber) return newNode(KindElement, object, key);
    ESNode* member = newNode(KindMember, object);
    member->name = key->kind == TokenString
                       ? key->name
                       : context_.toAtom(ESValue::number(unit_->code->numbers[key->numberIndex]));
    return member;
}

ESNode* ESParser::parsePrimary() {
    const int token = nextToken();
    switch (token) {
        case '(': {
            ESNode* expression = parseExpression();
            expect(')');
            return expression;
        }
        case '[':
            return parseArray();
        case '{':
            return parseObject();
        case TokenFunction:
            return parseFunction();
        case TokenNumber:
        case TokenIdentifier:
        case TokenString:
        case TokenThis:
        case TokenTrue:
        case TokenFalse:
        case TokenNull:
            return parseConstant(token);
        default:
            throwSyntaxError(QStringLiteral("expected an expression, found %1").arg(tokenName(token)));
    }
}

ESNode* ESParser::parseConstant(int token) {
    ESNode* node = newNode(token);
    node->name = tokenAtom();
    node->numberIndex = tokenNumber();
    return node;
}

ESNode* ESParser::parseArray() {
    ESNode* array = newNode(KindArray);
    NodeList elements;
    for (bool isAtEnd = accept(']'); !isAtEnd;) {
        const bool isEmpty = peekToken() == ',' || peekToken() == ']';
        elements.append(isEmpty ? newNode(KindElision) : parseAssignment());
        const int token = nextToken();
        if (token != ',' && token != ']')
            throwSyntaxError(QStringLiteral("']' or ',' expected, found %1").arg(tokenName(token)));
        isAtEnd = token == ']';
    }
    array->child[0] = elements.first();
    array->hasEffects = elements.hasEffects();
    return array;
}

ESNode* ESParser::parseObject() {
    ESNode* object = newNode(KindObject);
    NodeList members;
    while (!accept('}')) {
        const ESAtom* key = parseKey();
        expect(':');
        ESNode* member = newNode(KindObjectMember, parseAssignment());
        member->name = key;
        members.append(member);
        if (peekToken() != '}') expect(',');
    }
    object->child[0] = members.first();
    object->hasEffects = members.hasEffects();
    return object;
}

const ESAtom* ESParser::parseKey() {
    switch (nextToken()) {
        case TokenNumber:
            return context_.toAtom(ESValue::number(unit_->code->numbers[tokenNumber()]));
        case TokenString:
        case TokenIdentifier:
            return tokenAtom();
        default:
            throwSyntaxError(QStringLiteral("number, string, or identifier expected in object initialiser"));
    }
}

/// Behind the word "function". With a name, an assignment of the function to it.
ESNode* ESParser::parseFunction() {
    const Nesting nesting(*this);
    ESNode* name = nullptr;
    ESNode* function = newNode(TokenFunction);
    if (accept(TokenIdentifier)) {
        name = newName(tokenAtom());
        addVariable(context_, *unit_, name->name, DontEnumerate | DontDelete, false);
    }
    expect('(');
    FunctionUnit* unit = beginFunction();
    parseParameters(')');
    expect('{');
    ++functionDepth_;
    unit->body = parseStatementList({'}', TokenEnd});
    --functionDepth_;
    expect('}');
    endFunction(unit);
    function->function = unit;
    return name != nullptr ? markEffects(newNode('=', name, function)) : function;
}

/// Names separated by "," up to the token `end`, which is taken.
void ESParser::parseParameters(int end) {
    if (accept(end)) return;
    do {
        expect(TokenIdentifier);
        addVariable(context_, *unit_, tokenAtom(), DontDelete | Parameter, true);
    } while (accept(','));
    expect(end);
}

}  // namespace script

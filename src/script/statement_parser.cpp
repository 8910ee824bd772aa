#include "script/atom.h"
#include "script/context.h"
#include "script/parser_support.h"

#include <algorithm>

namespace script {

void ESParser::endStatement() {
    const int token = peekToken();
    if (token == ';')
        nextToken();
    else if (token != '}' && token != TokenEnd && !newlineBefore())
        expect(';');
}

/// A block node: declarations of functions, which run first, and the other statements.
ESNode* ESParser::parseStatementList(std::initializer_list<int> ends) {
    ESNode* block = newNode(KindBlock);
    NodeList declarations;
    NodeList statements;
    while (std::find(ends.begin(), ends.end(), peekToken()) == ends.end()) {
        if (peekToken() == TokenFunction) {
            nextToken();
            declarations.append(parseFunction());
        } else {
            statements.append(parseStatement());
        }
    }
    block->child[0] = declarations.first();
    block->child[1] = statements.first();
    return block;
}

ESNode* ESParser::parseStatement() {
    const Nesting nesting(*this);
    switch (const int token = peekToken()) {
        case ';':
            nextToken();
            return newNode(KindBlock);
        case '{':
            return parseBlock();
        case TokenWhile:
            return parseWhile();
        case TokenFor:
            return parseFor();
        case TokenBreak:
        case TokenContinue:
            return parseJump(token);
        case TokenWith:
            return parseWith();
        case TokenReturn:
            return parseReturn();
        case TokenVar: {
            nextToken();
            ESNode* declarations = parseVar();
            endStatement();
            return declarations;
        }
        case TokenIf:
            return parseIf();
        case TokenSwitch:
            return parseSwitch();
        case TokenDo:
            return parseDo();
        case TokenIdentifier:
            return isFollowedByColon() ? parseLabel() : parseExpressionStatement();
        default:
            return parseExpressionStatement();
    }
}

ESNode* ESParser::parseExpressionStatement() {
    ESNode* expression = parseExpression();
    endStatement();
    return expression;
}

ESNode* ESParser::parseLabel() {
    nextToken();
    ESNode* label = newNode(KindLabel);
    label->name = tokenAtom();
    expect(':');
    label->child[0] = parseStatement();
    return label;
}

ESNode* ESParser::parseBlock() {
    expect('{');
    ESNode* block = parseStatementList({'}', TokenEnd});
    expect('}');
    return block;
}

ESNode* ESParser::parseParenthesised() {
    expect('(');
    ESNode* expression = parseExpression();
    expect(')');
    return expression;
}

ESNode* ESParser::parseWhile() {
    nextToken();
    ESNode* loop = newNode(TokenWhile);
    loop->child[0] = parseParenthesised();
    loop->child[1] = parseStatement();
    return loop;
}

ESNode* ESParser::parseDo() {
    nextToken();
    ESNode* loop = newNode(TokenDo);
    loop->child[0] = parseBlock();
    expect(TokenWhile);
    loop->child[1] = parseParenthesised();
    return loop;
}

ESNode* ESParser::parseFor() {
    nextToken();
    ESNode* loop = newNode(TokenFor);
    expect('(');
    ESNode* init = parseForInit();
    if (init != nullptr && accept(TokenIn)) {
        if (init->kind == TokenVar && init->child[0]->next != nullptr)
            throwSyntaxError(QStringLiteral("too many variables in for-in expression"));
        return parseForIn(init);
    }
    expect(';');
    loop->child[0] = init;
    if (peekToken() != ';') loop->child[1] = parseExpression();
    expect(';');
    if (peekToken() != ')') loop->child[2] = parseExpression();
    expect(')');
    loop->child[3] = parseStatement();
    return loop;
}

ESNode* ESParser::parseForInit() {
    if (accept(TokenVar)) return parseVar();
    return peekToken() != ';' ? parseExpression() : nullptr;
}

ESNode* ESParser::parseForIn(ESNode* target) {
    ESNode* loop = newNode(KindForIn, target);
    loop->child[1] = parseExpression();
    expect(')');
    loop->child[2] = parseStatement();
    return loop;
}

ESNode* ESParser::parseIf() {
    nextToken();
    ESNode* node = newNode(TokenIf);
    node->child[0] = parseParenthesised();
    node->child[1] = parseStatement();
    if (accept(TokenElse)) node->child[2] = parseStatement();
    return node;
}

ESNode* ESParser::parseWith() {
    nextToken();
    ESNode* node = newNode(TokenWith);
    node->child[0] = parseParenthesised();
    ++withDepth_;
    node->child[1] = parseStatement();
    --withDepth_;
    return node;
}

ESNode* ESParser::parseReturn() {
    nextToken();
    ESNode* node = newNode(TokenReturn);
    if (functionDepth_ == 0)
        throwSyntaxError(QStringLiteral("%1 not in a function").arg(tokenName(TokenReturn)));
    const int token = peekToken();
    if (token != ';' && token != '}' && !newlineBefore()) node->child[0] = parseExpression();
    endStatement();
    return node;
}

ESNode* ESParser::parseJump(int kind) {
    nextToken();
    ESNode* node = newNode(kind);
    if (accept(TokenIdentifier)) node->name = tokenAtom();
    endStatement();
    return node;
}

ESNode* ESParser::parseSwitch() {
    nextToken();
    ESNode* node = newNode(TokenSwitch);
    node->child[0] = parseParenthesised();
    expect('{');
    NodeList clauses;
    while (!accept('}')) {
        ESNode* clause = parseClause(node);
        clauses.append(clause);
        if (clause->kind == TokenDefault) node->child[2] = clause;
        node->child[1] = clauses.first();
    }
    return node;
}

ESNode* ESParser::parseClause(const ESNode* switchNode) {
    const int token = nextToken();
    if (token != TokenCase && token != TokenDefault)
        throwSyntaxError(QStringLiteral("expected 'case' or 'default' but found '%1'").arg(tokenName(token)));
    if (token == TokenDefault && switchNode->child[2] != nullptr)
        throwSyntaxError(QStringLiteral("default case already defined"));
    ESNode* clause = newNode(token);
    if (token == TokenCase) clause->child[0] = parseExpression();
    expect(':');
    clause->child[1] = parseStatementList({TokenCase, TokenDefault, '}', TokenEnd});
    return clause;
}

/// The declarations behind "var", each a name or an assignment to one.
ESNode* ESParser::parseVar() {
    ESNode* node = newNode(TokenVar);
    NodeList declarations;
    do {
        declarations.append(parseDeclaration());
    } while (accept(','));
    node->child[0] = declarations.first();
    return node;
}

ESNode* ESParser::parseDeclaration() {
    expect(TokenIdentifier);
    ESNode* name = newName(tokenAtom());
    addVariable(context_, *unit_, name->name, DontEnumerate | DontDelete, false);
    if (!accept('=')) return name;
    return markEffects(newNode('=', name, parseAssignment()));
}

}  // namespace script

#pragma once

#include "script/lexer.h"
#include "script/tree.h"

#include <QString>

#include <deque>
#include <memory>
#include <vector>

namespace script {

class ESContext;

/// Compiles one source text: builds its syntax tree by recursive descent, then lets the code generator write
/// its byte code. One is made for each compilation. Faults are SyntaxErrors of the context; a code too large
/// for its operands is an ESFatalError.
class ESParser : private ESLexer {
public:
    explicit ESParser(ESContext& context);
    ~ESParser();

    using ESLexer::expect;
    using ESLexer::nextToken;
    using ESLexer::peekToken;
    /// Starts over with `text`, which outlives the compilation.
    void setSource(QStringView text);

    /// The byte code of the whole text.
    std::unique_ptr<ESCode> compileProgram();
    /// A function of the comma-separated names of `parameterText` with the statements of `bodyText`.
    std::unique_ptr<ESCode> compileFunction(QStringView parameterText, QStringView bodyText);

private:
    class Nesting;

    ESNode* newNode(int kind);
    ESNode* newNode(int kind, ESNode* first, ESNode* second = nullptr, ESNode* third = nullptr);
    ESNode* markEffects(ESNode* node);
    ESNode* newName(const ESAtom* name);

    // Statements.
    ESNode* parseStatementList(std::initializer_list<int> ends);
    ESNode* parseStatement();
    ESNode* parseBlock();
    ESNode* parseWhile();
    ESNode* parseDo();
    ESNode* parseFor();
    ESNode* parseForInit();
    ESNode* parseForIn(ESNode* target);
    ESNode* parseIf();
    ESNode* parseWith();
    ESNode* parseReturn();
    ESNode* parseJump(int kind);
    ESNode* parseSwitch();
    ESNode* parseClause(const ESNode* switchNode);
    ESNode* parseVar();
    ESNode* parseDeclaration();
    ESNode* parseLabel();
    ESNode* parseExpressionStatement();
    ESNode* parseParenthesised();
    void endStatement();

    // Expressions.
    ESNode* parseExpression();
    ESNode* parseAssignment();
    ESNode* parseLogicalOr();
    ESNode* parseLogicalAnd();
    ESNode* parseBinary(int looseness);
    ESNode* parseUnary();
    ESNode* parsePostfix();
    ESNode* parseMember();
    ESNode* parseNew();
    ESNode* parseSuffixes(ESNode* node, bool takesCalls);
    ESNode* parseArguments();
    ESNode* parseElementAccess(ESNode* object);
    ESNode* parsePrimary();
    ESNode* parseConstant(int token);
    ESNode* parseArray();
    ESNode* parseObject();
    const ESAtom* parseKey();
    ESNode* parseFunction();
    void parseParameters(int end);

    FunctionUnit* beginFunction();
    void endFunction(FunctionUnit* unit);
    void generateFunctions();

    ESContext& context_;
    std::deque<ESNode> nodes_;
    std::deque<FunctionUnit> units_;
    FunctionUnit* unit_ = nullptr;
    std::vector<FunctionUnit*> functions_;  ///< in order of completion, inner ones first
    int functionDepth_ = 0;
    int withDepth_ = 0;
    int nesting_ = 0;
};

/// Notes that `unit` declares `name`. At top level that makes a slot of the global object; in a function a
/// parameter (attribute Parameter) or a local. `replace` hides an earlier entry of the same name.
void addVariable(ESContext& context, FunctionUnit& unit, const ESAtom* name, std::uint32_t attributes,
                 bool replace);

}  // namespace script

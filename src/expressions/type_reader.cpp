#include "expressions/type_reader.h"

#include "expressions/expression_parser.h"
#include "expressions/parser_exception.h"

#include <algorithm>
#include <utility>

namespace expressions {

namespace {

struct SimpleWord {
    const char* word;
    SimpleKind kind;
};

constexpr SimpleWord simpleWords[] = {
    {"double", SimpleKind::Double}, {"float", SimpleKind::Float}, {"int", SimpleKind::Int},
    {"short", SimpleKind::Short},   {"char", SimpleKind::Char},
};

const SimpleWord* findSimpleWord(const QString& word) {
    const auto* row =
        std::find_if(std::begin(simpleWords), std::end(simpleWords),
                     [&word](const auto& candidate) { return word == QLatin1String(candidate.word); });
    return row == std::end(simpleWords) ? nullptr : row;
}

[[noreturn]] void fail(const char* message) {
    throw ParserException(QString::fromLatin1(message));
}

}  // namespace

TypePtr TypeReader::readType() {
    bool isLong = false;
    bool hasSign = false;
    bool isUnsigned = false;
    while (tokens_.token() == Token::Ident) {
        const QString word = tokens_.text();
        if (word == u"signed" || word == u"unsigned") {
            hasSign = true;
            isUnsigned = word == u"unsigned";
        } else if (word == u"long" && !isLong) {
            isLong = true;
        } else if (word == u"long") {
            tokens_.advance();
            return makeNode<SimpleType>(SimpleKind::LongLong, isUnsigned);
        } else if (const SimpleWord* simple = findSimpleWord(word)) {
            tokens_.advance();
            return makeNode<SimpleType>(simple->kind, isUnsigned);
        } else if (word != u"const" && word != u"volatile") {
            if (TypePtr user = readUserType()) return user;
            break;
        }
        tokens_.advance();
    }
    if (isLong) return makeNode<SimpleType>(SimpleKind::Long, isUnsigned);
    if (hasSign) return makeNode<SimpleType>(SimpleKind::Int, isUnsigned);
    return nullptr;
}

TypePtr TypeReader::readCastType() {
    if (tokens_.text() == u"struct") return readStruct();
    if (tokens_.text() == u"register") return readRegister();
    return readType();
}

TypePtr TypeReader::readUserType() {
    const TokenReader::State start = tokens_.save();
    const bool isTemplate = parser_.isTemplateName(tokens_.text());
    QString name = tokens_.readName();
    bool isType = parser_.isTypeName(name);
    while (tokens_.token() == Token::ColonColon && (isType || isTemplate)) {
        tokens_.advance();
        name += QStringLiteral("::") + tokens_.readName();
        isType = isType || parser_.isTypeName(name);
    }
    if (isType) return makeNode<UserType>(name);
    tokens_.restore(start);
    return nullptr;
}

TypePtr TypeReader::readStruct() {
    tokens_.advance();
    if (tokens_.token() == Token::Ident) {
        const QString name = QStringLiteral("struct ") + tokens_.text();
        if (!parser_.isTypeName(name)) fail("struct type not found");
        tokens_.advance();
        return makeNode<UserType>(name);
    }
    tokens_.expect(Token::LCurly, "'{' expected");
    NodePtr<StructType> type = makeNode<StructType>();
    while (tokens_.token() != Token::RCurly) type->fields.push_back(readStructField());
    tokens_.advance();
    return type;
}

StructField TypeReader::readStructField() {
    StructField field;
    field.type = readType();
    if (!field.type) fail("struct parse error");
    if (tokens_.token() == Token::Ident) {
        field.name = tokens_.text();
        tokens_.advance();
    }
    if (tokens_.token() == Token::Colon) {
        tokens_.advance();
        field.bitWidth = readNumber("integer must follow ':'");
    }
    tokens_.expect(Token::Semicolon, "';' expected");
    return field;
}

TypePtr TypeReader::readRegister() {
    tokens_.advance();
    NodePtr<RegisterType> type = makeNode<RegisterType>();
    type->size = readNumber("size expected");
    while (tokens_.token() != Token::Semicolon) {
        RegisterField field;
        field.name = tokens_.text();
        if (tokens_.token() != Token::String && tokens_.token() != Token::Ident) fail("fieldname expected");
        tokens_.advance();
        field.bitOffset = readNumber("bitoffset expected");
        field.bitSize = readNumber("bitsize expected");
        type->fields.push_back(std::move(field));
    }
    tokens_.advance();
    return type;
}

std::uint32_t TypeReader::readNumber(const char* message) {
    if (!tokens_.isInteger()) fail(message);
    const auto number = static_cast<std::uint32_t>(tokens_.integerValue());
    tokens_.advance();
    return number;
}

}  // namespace expressions

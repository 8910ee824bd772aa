#pragma once

#include "expressions/expression.h"
#include "expressions/syntax_node.h"

#include <QString>

#include <cstdint>
#include <vector>

namespace expressions {

/// A type as an expression names it, in a cast or a `sizeof`. It is a plain description without layout:
/// sizes come from the parser that evaluates.
class BaseType : public SyntaxNode {};

using TypePtr = NodePtr<BaseType>;

enum class SimpleKind : std::uint32_t { Char, Short, Int, Long, LongLong, Float, Double };

class SimpleType : public BaseType {
public:
    SimpleType(SimpleKind simpleKind, bool hasUnsigned) : kind(simpleKind), isUnsigned(hasUnsigned) {}

    SimpleKind kind;
    bool isUnsigned;

protected:
    /// Floats have no word in the text form.
    void write(TextForm& form) const override;
};

/// A type that the host knows by name.
class UserType : public BaseType {
public:
    explicit UserType(const QString& typeName) : name(typeName) {}

    QString name;

protected:
    void write(TextForm& form) const override;
};

struct StructField {
    QString name;
    TypePtr type;
    std::uint32_t bitWidth = 0;  ///< 0 for a plain field
};

class StructType : public BaseType {
public:
    std::vector<StructField> fields;

protected:
    void write(TextForm& form) const override;
};

struct RegisterField {
    QString name;
    std::uint32_t bitOffset = 0;
    std::uint32_t bitSize = 0;
};

class RegisterType : public BaseType {
public:
    std::uint32_t size = 0;
    std::vector<RegisterField> fields;

protected:
    void write(TextForm& form) const override;
};

class ArrayType : public BaseType {
public:
    ArrayType(TypePtr element, ExpressionPtr count)
        : elementType(std::move(element)), size(std::move(count)) {}

    TypePtr elementType;
    ExpressionPtr size;

protected:
    void write(TextForm& form) const override;
};

class PointerType : public BaseType {
public:
    explicit PointerType(TypePtr pointed) : pointedType(std::move(pointed)) {}

    TypePtr pointedType;

protected:
    void write(TextForm& form) const override;
};

}  // namespace expressions

#pragma once

#include <QString>

#include <cstdint>
#include <memory>
#include <vector>

namespace script {

class ForthEngine;

enum ForthValueType : std::uint32_t {
    ForthInteger = 3,
    ForthReal = 4,
};

/// A cell of the stacks. `type` tells which of the values counts.
struct ForthValue {
    std::uint32_t state = 0;  ///< the host's own
    std::int64_t integer = 0;
    double real = 0;
    std::uint32_t extraState = 0;  ///< the host's own
    std::uint32_t type = ForthInteger;
    QString text;

    static ForthValue ofInteger(std::int64_t integer);
    static ForthValue ofReal(double real);
};

enum ForthFlags : std::uint32_t {
    ForthImmediate = 2,  ///< the word is executed also while compiling
};

/// A node of threaded code and an entry of a word list. Hosts derive their primitives from it. Failures are a
/// `ForthException`.
class pcode {
public:
    pcode() = default;
    explicit pcode(QString wordName) : name(std::move(wordName)) {}
    pcode(const pcode&) = delete;
    pcode& operator=(const pcode&) = delete;
    virtual ~pcode() = default;

    virtual void execute(ForthEngine& engine);
    /// The parameter field: `body`, unless that is null.
    virtual void* parameterField();
    virtual void* codeField();
    virtual void store();

    void* body = nullptr;  ///< borrowed
    QString name;
    pcode* next = nullptr;  ///< behind this one in a definition; borrowed
    std::uint32_t flags = 0;
    QString help;  ///< the host's own
};

/// A call of another word, which outlives this node.
class PCall : public pcode {
public:
    explicit PCall(pcode* word) : target(word) {}
    void execute(ForthEngine& engine) override;

    pcode* target;
};

/// Pushes a value.
class PLiteralChild : public pcode {
public:
    explicit PLiteralChild(ForthValue pushed) : value(std::move(pushed)) {}
    void execute(ForthEngine& engine) override;

    ForthValue value;
};

/// A word made of others. It owns its body, which runs from `first` along `next` to `last`.
class ForthDefinition : public pcode {
public:
    using pcode::pcode;
    void execute(ForthEngine& engine) override;

    /// Throws code -270 with the name once the definition is sealed.
    void append(std::unique_ptr<pcode> node);

    pcode* first = nullptr;
    pcode* last = nullptr;
    bool sealed = false;

private:
    std::vector<std::unique_ptr<pcode>> nodes_;
};

}  // namespace script

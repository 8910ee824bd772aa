#pragma once

#include "script/native_class.h"

namespace script {

/// Error objects of the general kind. The other kinds differ in their name and prototype.
class ESNativeError : public ESNativeClass {
public:
    ESNativeError() : ESNativeError(QStringLiteral("Error")) {}

    /// Makes prototype and constructor. The general kind goes first: its prototype is that of the others.
    void install(ESContext& context);
    void call(ESContext& context, ESObject* function, ESObject* thisObject, std::uint32_t argc,
              ESValue* argv) override;
    ESObject* construct(ESContext& context, ESObject* function, std::uint32_t argc, ESValue* argv) override;

    ESObject* prototypeObject() const { return prototype_; }
    ESObject* constructorFunction() const { return constructor_; }

protected:
    explicit ESNativeError(const QString& name) : ESNativeClass(name) {}
    /// Runs at the end of the set-up.
    virtual void setUpMore(ESContext& context);

private:
    ESObject* prototype_ = nullptr;
    ESObject* constructor_ = nullptr;
};

class ESNativeEvalError : public ESNativeError {
public:
    ESNativeEvalError() : ESNativeError(QStringLiteral("EvalError")) {}
};

class ESNativeRangeError : public ESNativeError {
public:
    ESNativeRangeError() : ESNativeError(QStringLiteral("RangeError")) {}
};

class ESNativeReferenceError : public ESNativeError {
public:
    ESNativeReferenceError() : ESNativeError(QStringLiteral("ReferenceError")) {}
};

class ESNativeSyntaxError : public ESNativeError {
public:
    ESNativeSyntaxError() : ESNativeError(QStringLiteral("SyntaxError")) {}
};

class ESNativeTypeError : public ESNativeError {
public:
    ESNativeTypeError() : ESNativeError(QStringLiteral("TypeError")) {}
};

}  // namespace script

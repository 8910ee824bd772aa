#include "script/context.h"

#include "script/limits.h"
#include "script/native_array.h"
#include "script/native_boolean.h"
#include "script/native_date.h"
#include "script/native_error.h"
#include "script/native_function.h"
#include "script/native_global.h"
#include "script/native_math.h"
#include "script/native_number.h"
#include "script/native_object.h"
#include "script/native_string.h"
#include "script/parser.h"

#include <new>
#include <optional>

namespace script {

namespace {

/// The line of that number, counted from 1; nothing when there is none.
std::optional<QStringView> lineOf(QStringView text, std::uint32_t number) {
    if (number == 0) return std::nullopt;
    while (--number > 0) {
        const qsizetype end = text.indexOf(u'\n');
        if (end < 0) return std::nullopt;
        text = text.sliced(end + 1);
    }
    const qsizetype end = text.indexOf(u'\n');
    return end < 0 ? text : text.first(end);
}

}  // namespace

/// Puts the registers back as they were, however an evaluation ends.
class RegisterGuard {
public:
    explicit RegisterGuard(ESContext& context)
        : context_(context),
          sp_(context.sp_),
          frame_(context.frame_),
          scope_(context.frame_->scope),
          sourceText_(context.sourceText_),
          fileName_(context.fileName_) {}
    RegisterGuard(const RegisterGuard&) = delete;
    RegisterGuard& operator=(const RegisterGuard&) = delete;
    ~RegisterGuard() {
        context_.sp_ = sp_;
        context_.frame_ = frame_;
        context_.frame_->scope = scope_;
        context_.sourceText_ = sourceText_;
        context_.fileName_ = fileName_;
    }

private:
    ESContext& context_;
    ESValue* sp_;
    ESContext::Frame* frame_;
    ScopeLink* scope_;
    QString sourceText_;
    QString fileName_;
};

ESContext::ESContext()
    : arena_(limits::contextMemory),
      stack_(limits::stackSize + limits::stackReserve),
      stackEnd_(stack_.begin() + limits::stackSize),
      sp_(stack_.begin()),
      frames_(limits::callDepth),
      frame_(frames_.begin()),
      framesEnd_(frames_.begin() + limits::callDepth) {}

ESContext::~ESContext() = default;

bool ESContext::checkInterrupt() {
    return true;
}

/// Runs `work`, which answers a value, and turns its script error into a result.
template <class Work>
ESResult ESContext::guarded(Work work) {
    const RegisterGuard guard(*this);
    ESResult result;
    try {
        result.value = work();
    } catch (const ESException& error) {
        result.status = ESResult::Exception;
        result.value = error.value;
    }
    if (result.value.isNoElement()) result.value = ESValue();
    // A host compares and keeps texts as atoms.
    if (result.value.tag() == Tag::String) result.value = ESValue(toAtom(result.value));
    return result;
}

ESResult ESContext::evaluate(const QString& fileName, const QString& sourceText) {
    return guarded([&] {
        sourceText_ = sourceText;
        fileName_ = fileName;
        ESParser parser(*this);
        parser.setSource(sourceText_);
        const std::unique_ptr<ESCode> code = parser.compileProgram();
        run(*code);
        return acc();
    });
}

ESResult ESContext::describe(const ESValue& value) {
    return guarded([&] { return toText(value); });
}

ESObject* ESContext::newCell() {
    constexpr std::size_t blockSize = 64;
    if (freeCells_ == nullptr) {
        auto* block = arena_.allocateArray<ESObject>(blockSize);
        for (std::size_t i = blockSize; i-- > 0;) releaseCell(block + i);
    }
    ESObject* cell = freeCells_;
    freeCells_ = cell->prototype;
    return new (cell) ESObject();
}

void ESContext::releaseCell(ESObject* object) {
    new (object) ESObject();
    object->prototype = freeCells_;
    freeCells_ = object;
}

ESObject* ESContext::newObject(ESObject* prototype, ESClass* cls) {
    ESObject* object = newCell();
    object->prototype = prototype;
    object->cls = cls;
    return object;
}

ESObject* ESContext::newArray(std::uint32_t count, const ESValue* values) {
    ESObject* array = newObject(arrayPrototype, arrayClass.get());
    array->isArray = true;
    array->properties.append(arena_, knownAtoms().length, DontEnumerate, ESValue(static_cast<double>(count)));
    for (std::uint32_t i = 0; i < count; ++i) array->elements.put(arena_, i, values[i]);
    return array;
}

ESObject* ESContext::newFunction(ESObject* prototype, ESClass* cls, const ESClosure& closure) {
    ESObject* function = newObject(prototype, cls);
    function->closure = static_cast<ESClosure*>(arena_.allocate(sizeof(ESClosure)));
    *function->closure = closure;
    function->properties.append(arena_, knownAtoms().length, DontEnumerate,
                                ESValue(static_cast<double>(closure.arity)));
    return function;
}

ESObject* ESContext::newClosure(const ESCode& code) {
    capture(scope());
    ESObject* function = newFunction(functionPrototype, functionClass.get(),
                                     {code.parameterCount, code.localCount, &code, scope()});
    function->constructor = function->closure;
    ESObject* prototype = newObject(objectPrototype, objectClass.get());
    function->properties.append(arena_, knownAtoms().prototype, DontEnumerate, ESValue(prototype));
    prototype->properties.append(arena_, knownAtoms().constructor, DontEnumerate, ESValue(function));
    return function;
}

ESValue ESContext::get(ESObject* object, const ESAtom* name) {
    ESValue result;
    object->cls->get(result, *this, object, name);
    return result;
}

void ESContext::put(ESObject* object, const ESAtom* name, const ESValue& value) {
    object->cls->put(*this, object, name, value);
}

void ESContext::defineProperty(ESObject* object, std::uint32_t attributes, const ESAtom* name,
                               const ESValue& value) {
    const ESValue kept = value;
    // An element with attributes has to stand among the named properties, and to be written before it is
    // read-only.
    if (attributes != NoAttributes) {
        if (object->elements.find(name->arrayIndex) != nullptr) deleteProperty(*object, name);
        if (object->properties.find(name) == nullptr) object->add(arena_, name, DontEnumerate, ESValue());
    }
    put(object, name, kept);
    if (ESProperty* property = object->properties.find(name)) property->attributes = attributes;
}

ESObject* ESContext::installBuiltin(ESObject* holder, const ESBuiltinDescriptor& descriptor,
                                    ESObject* prototype, ESClass* cls) {
    ESObject* function = newFunction(prototype, cls, {descriptor.arity, 0, nullptr, nullptr});
    function->value = ESValue(descriptor.fullName);
    function->builtinId = descriptor.id;
    if (descriptor.constructs) function->constructor = function->closure;
    if (descriptor.help != nullptr)
        put(function, internAtom(u"help"), newString(QString::fromUtf8(descriptor.help)));
    put(holder, descriptor.name, ESValue(function));
    return function;
}

ESObject* ESContext::installConstructor(const ESBuiltinDescriptor& descriptor, ESObject* prototypeObject,
                                        ESClass* cls) {
    ESObject* function = installBuiltin(global, descriptor, functionPrototype, cls);
    function->constructor = function->closure;
    function->properties.append(arena_, knownAtoms().prototype, DontEnumerate, ESValue(prototypeObject));
    prototypeObject->properties.append(arena_, knownAtoms().constructor, DontEnumerate, ESValue(function));
    return function;
}

std::uint32_t ESContext::addTemplate(std::unique_ptr<ESCode> code) {
    templates_.push_back(std::move(code));
    return static_cast<std::uint32_t>(templates_.size() - 1);
}

const ESAtom* ESContext::hiddenName() {
    static std::uint64_t counter = 0;
    return makeHiddenAtom(QStringLiteral("CG%1").arg(counter++));
}

std::uint32_t ESContext::currentLine() const {
    if (frame_->code == nullptr || frame_->code->lines.empty()) return 0;
    const auto behind = static_cast<std::size_t>(frame_->pc - frame_->code->bytes.data());
    return frame_->code->lines[behind > 0 ? behind - 1 : 0];
}

void ESContext::throwError(ESObject* errorConstructor, const QString& message) {
    throwErrorAt(currentLine(), errorConstructor, message);
}

void ESContext::throwErrorAt(std::uint32_t line, ESObject* errorConstructor, const QString& message) {
    const ESValue text = newString(message);
    ESObject* error = construct(errorConstructor, 1, &text);
    if (!fileName_.isEmpty()) put(error, internAtom(u"fileName"), newString(fileName_));
    if (const std::optional<QStringView> sourceLine = lineOf(sourceText_, line)) {
        put(error, internAtom(u"lineNumber"), ESValue(static_cast<double>(line)));
        put(error, internAtom(u"sourceLine"), newString(*sourceLine));
    }
    throw ESException{ESValue(error)};
}

void ESContext::throwTypeError(const QString& message) {
    throwError(typeErrorClass->constructorFunction(), message);
}

void ESContext::throwRangeError(const QString& message) {
    throwError(rangeErrorClass->constructorFunction(), message);
}

void ESContext::throwGeneralError(const QString& message) {
    throwError(errorClass->constructorFunction(), message);
}

void ESContext::setUpPrototypes() {
    knownAtoms();
    objectClass = std::make_unique<ESNativeObject>();
    objectPrototype = newObject(nullptr, objectClass.get());
    const auto plain = [this] { return newObject(objectPrototype, objectClass.get()); };
    functionPrototype = plain();
    stringPrototype = plain();
    numberPrototype = plain();
    booleanPrototype = plain();
    arrayPrototype = plain();
    datePrototype = plain();
    globalClass = std::make_unique<ESNativeGlobal>();
    global = newObject(objectPrototype, globalClass.get());
    global->value = ESValue(internAtom(u"[object global]"));
    frame_->thisObject = global;
    activationClass = std::make_unique<ESClass>(QStringLiteral("activation"));
}

void ESContext::setUp() {
    setUpPrototypes();
    arrayClass = std::make_unique<ESNativeArray>();
    functionClass = std::make_unique<ESNativeFunction>();
    errorClass = std::make_unique<ESNativeError>();
    evalErrorClass = std::make_unique<ESNativeEvalError>();
    rangeErrorClass = std::make_unique<ESNativeRangeError>();
    referenceErrorClass = std::make_unique<ESNativeReferenceError>();
    syntaxErrorClass = std::make_unique<ESNativeSyntaxError>();
    typeErrorClass = std::make_unique<ESNativeTypeError>();
    numberClass = std::make_unique<ESNativeNumber>();
    stringClass = std::make_unique<ESNativeString>();
    booleanClass = std::make_unique<ESNativeBoolean>();
    dateClass = std::make_unique<ESNativeDate>();
    mathClass = std::make_unique<ESNativeMath>();
    objectClass->install(*this);
    booleanClass->install(*this);
    arrayClass->install(*this);
    globalClass->install(*this);
    errorClass->install(*this);
    rangeErrorClass->install(*this);
    referenceErrorClass->install(*this);
    syntaxErrorClass->install(*this);
    typeErrorClass->install(*this);
    evalErrorClass->install(*this);
    numberClass->install(*this);
    mathClass->install(*this);
    stringClass->install(*this);
    functionClass->install(*this);
    dateClass->install(*this);
}

}  // namespace script

#pragma once

#include "script/arena.h"
#include "script/atom.h"
#include "script/class.h"
#include "script/code.h"
#include "script/exception.h"
#include "script/object.h"
#include "script/zeroed_array.h"

#include <QString>

#include <cstdint>
#include <deque>
#include <memory>
#include <type_traits>
#include <typeinfo>

namespace script {

class ESNativeArray;
class ESNativeBoolean;
class ESNativeDate;
class ESNativeError;
class ESNativeFunction;
class ESNativeGlobal;
class ESNativeMath;
class ESNativeNumber;
class ESNativeObject;
class ESNativeString;

enum class Op : std::uint8_t;

/// What an evaluation came to.
struct ESResult {
    enum Status : std::uint32_t { Normal = 0, Exception = 4 };

    std::uint32_t status = Normal;
    ESValue value;    ///< the program's value, or the thrown value
    QString message;  ///< empty
};

/// The hint of a conversion to a primitive.
enum class Hint { Number = 3, String = 4, None = 6 };

/// One interpreter: its objects, its value stack, its global object and library. Make one (or an object of a
/// derived class), fill it with `initContext`, bind host functions with `installBuiltin`, run texts with
/// `evaluate`. Everything that a script makes lives until the context is destroyed. One thread at a time; a
/// script's error is an ESException, a fault of the machine an ESFatalError.
class ESContext {
public:
    ESContext();
    ESContext(const ESContext&) = delete;
    ESContext& operator=(const ESContext&) = delete;
    virtual ~ESContext();

    /// Asked before the first instruction of a run and after each one; false ends the script. A host that
    /// does not override it pays nothing.
    virtual bool checkInterrupt();

    /// Compiles and runs `sourceText`. `fileName` names it in errors. A script error becomes a result of
    /// status Exception; ESFatalError passes through. Either way the registers are then as they were before.
    ESResult evaluate(const QString& fileName, const QString& sourceText);

    /// The text of `value`, which may run a script's `toString`, with the same outcomes as `evaluate`.
    ESResult describe(const ESValue& value);

    // Objects.
    ESObject* newCell();
    ESObject* newObject(ESObject* prototype, ESClass* cls);
    ESObject* newArray(std::uint32_t count, const ESValue* values);
    ESObject* newFunction(ESObject* prototype, ESClass* cls, const ESClosure& closure);
    /// A function object for `code` in the current scope, with "length" and a fresh "prototype".
    ESObject* newClosure(const ESCode& code);
    void releaseCell(ESObject* object);
    ESValue newString(QStringView text) { return ESValue(makeString(arena_, text)); }
    ESValue get(ESObject* object, const ESAtom* name);
    void put(ESObject* object, const ESAtom* name, const ESValue& value);
    /// Stores through the class's `put`, after which the property bears `attributes`.
    void defineProperty(ESObject* object, std::uint32_t attributes, const ESAtom* name, const ESValue& value);
    /// A function of `cls` under the descriptor's name in `holder`.
    ESObject* installBuiltin(ESObject* holder, const ESBuiltinDescriptor& descriptor, ESObject* prototype,
                             ESClass* cls);
    /// A constructor of the global object, tied to `prototypeObject`.
    ESObject* installConstructor(const ESBuiltinDescriptor& descriptor, ESObject* prototypeObject,
                                 ESClass* cls);

    // Properties by computed name, and elements.
    ESValue getComputed(ESObject* object, const ESValue& key);
    void putComputed(ESObject* object, const ESValue& key, const ESValue& value);
    ESValue getElement(ESObject* object, std::uint32_t i) {
        const ESValue* element = object->elements.find(i);
        return element != nullptr ? *element : getMissingElement(object, i);
    }
    void putElement(ESObject* object, std::uint32_t i, const ESValue& value);

    // Conversions (ECMA-262 third edition, chapter 9, with this engine's own rules for numbers and texts).
    ESValue toPrimitive(const ESValue& value, Hint hint);
    bool toBoolean(const ESValue& value);
    double toNumber(const ESValue& value);
    double toInteger(const ESValue& value);
    std::int32_t toInt32(const ESValue& value);
    std::uint32_t toUint32(const ESValue& value);
    std::uint16_t toUint16(const ESValue& value);
    QString toStringValue(const ESValue& value, int radix = 10);
    /// The same as a string value, which costs no copy when `value` is a string.
    ESValue toText(const ESValue& value);
    const ESAtom* toAtom(const ESValue& value);
    ESObject* toObject(const ESValue& value);
    ESValue defaultValue(ESObject* object, Hint hint);
    bool strictEquals(const ESValue& a, const ESValue& b);
    QStringView view(const ESText& text) { return viewOf(arena_, text); }
    /// `left` then `right`; RangeError "string too long" beyond the limit.
    ESValue concatenateTexts(const ESText& left, const ESText& right);

    // Calls.
    /// Runs `code` as a program in the current scope, with its value in `acc`.
    void run(const ESCode& code);
    /// Calls with the top `argc` stack entries, which are gone afterwards; `acc` holds the result.
    void call(ESObject* function, ESObject* thisObject, std::uint32_t argc);
    ESObject* construct(ESObject* function, std::uint32_t argc, const ESValue* argv);
    /// The way for natives to call back.
    ESValue callFunction(ESObject* function, ESObject* thisObject, std::uint32_t argc, const ESValue* argv);
    /// The same for those who call often: with `argc` arguments that were pushed one by one.
    void pushArgument(ESValue value) {
        if (sp_ == stackEnd_) stackOverflow();
        *++sp_ = value;
    }
    /// The result stays until the next push.
    const ESValue& callPushed(ESObject* function, ESObject* thisObject, std::uint32_t argc) {
        call(function, thisObject, argc);
        return *sp_--;
    }
    /// The value of `name` in the scope chain or the global object; answers the object that has it.
    ESObject* lookupName(const ESAtom* name, ESValue& result);
    void assignName(const ESAtom* name, const ESValue& value);
    [[noreturn]] static void stackOverflow();
    /// True when a long native loop shall end because the host ends the script.
    bool isInterrupted() { return asksHost_ && !checkInterrupt(); }

    // Errors.
    /// Throws ESException with a new error of `errorConstructor`, which knows file and line.
    [[noreturn]] void throwError(ESObject* errorConstructor, const QString& message);
    [[noreturn]] void throwErrorAt(std::uint32_t line, ESObject* errorConstructor, const QString& message);
    [[noreturn]] void throwTypeError(const QString& message);
    [[noreturn]] void throwRangeError(const QString& message);
    [[noreturn]] void throwGeneralError(const QString& message);
    /// Raises ESFatalError when little native stack is left.
    static void checkNativeStack();

    // Code.
    /// Keeps `code` for the life of the context; answers its index.
    std::uint32_t addTemplate(std::unique_ptr<ESCode> code);
    const ESCode& codeTemplate(std::uint32_t index) const { return *templates_[index]; }
    /// A name that no source text can hold.
    static const ESAtom* hiddenName();

    // Registers.
    const ESValue& acc() const { return *sp_; }
    ESObject* thisObject() const { return frame_->thisObject; }
    ScopeLink* scope() const { return frame_->scope; }
    /// The line of the instruction in hand; 0 when no script runs.
    std::uint32_t currentLine() const;
    const QString& sourceText() const { return sourceText_; }
    const QString& fileName() const { return fileName_; }
    Arena& arena() { return arena_; }

    ESObject* global = nullptr;
    ESObject* objectPrototype = nullptr;
    ESObject* functionPrototype = nullptr;
    ESObject* stringPrototype = nullptr;
    ESObject* numberPrototype = nullptr;
    ESObject* booleanPrototype = nullptr;
    ESObject* arrayPrototype = nullptr;
    ESObject* datePrototype = nullptr;

    std::unique_ptr<ESNativeGlobal> globalClass;
    std::unique_ptr<ESNativeArray> arrayClass;
    std::unique_ptr<ESNativeFunction> functionClass;
    std::unique_ptr<ESNativeError> errorClass;
    std::unique_ptr<ESNativeError> evalErrorClass;
    std::unique_ptr<ESNativeNumber> numberClass;
    std::unique_ptr<ESNativeString> stringClass;
    std::unique_ptr<ESNativeBoolean> booleanClass;
    std::unique_ptr<ESNativeError> referenceErrorClass;
    std::unique_ptr<ESNativeError> rangeErrorClass;
    std::unique_ptr<ESNativeError> syntaxErrorClass;
    std::unique_ptr<ESNativeError> typeErrorClass;
    std::unique_ptr<ESNativeDate> dateClass;
    std::unique_ptr<ESNativeObject> objectClass;
    std::unique_ptr<ESNativeMath> mathClass;
    std::unique_ptr<ESClass> activationClass;

private:
    template <class Host>
    friend Host& initContext(Host& context);
    friend class RegisterGuard;

    /// A running code and its registers. The bottom frame stands for the host.
    struct Frame {
        const ESCode* code = nullptr;
        const std::uint8_t* pc = nullptr;  ///< behind the opcode in hand, when the frame calls out
        ESValue* args = nullptr;
        std::uint32_t argCount = 0;  ///< with padding; locals stand behind
        ScopeLink* scope = nullptr;
        ScopeLink* activation = nullptr;  ///< the link that this call itself put in front
        ESObject* thisObject = nullptr;
        ESObject* constructed = nullptr;  ///< what `new` is making
    };

    template <class Work>
    ESResult guarded(Work work);
    void setUp();
    void setUpPrototypes();
    Frame& pushFrame();
    void enter(ESObject* function, ESObject* thisObject, std::uint32_t argc);
    void enterActivation(Frame& frame);
    void leave();
    ESObject* prototypeFor(ESObject* function);
    void callBuiltin(ESObject* function, ESObject* thisObject, std::uint32_t argc);
    void beginCall(const ESValue& callee, ESObject* thisObject, std::uint32_t argc);
    void beginMethodCall(const ESValue& target, const ESAtom* name, std::uint32_t argc);
    void beginConstruct(const ESValue& callee, std::uint32_t argc);
    void execute();
    template <bool asksHost>
    void interpret(const Frame* bottom);
    void unwindTo(const Frame* bottom);
    ESObject* enumerate(ESObject* object);
    bool next(ESObject* enumeration, ESValue& name);
    bool deleteByName(const ESAtom* name);
    double stepName(const ESAtom* name, double step);
    ESValue getMissingElement(ESObject* object, std::uint32_t i);
    ESValue getMember(const ESValue& target, const ESAtom* name);
    ESValue getComputedMember(const ESValue& target, const ESValue& key);
    ESValue stepProperty(Op op, const ESValue& target, const ESValue& key);
    ESValue combineProperty(Op op, const ESValue& target, const ESValue& key, const ESValue& right);
    ESValue makeArray(std::uint32_t count, const ESValue* values);
    void pushScope(ESObject* object);
    static void capture(ScopeLink* scope);
    [[noreturn]] void throwUnknownOpcode();

    Arena arena_;
    ESObject* freeCells_ = nullptr;
    ZeroedArray<ESValue> stack_;
    ESValue* stackEnd_ = nullptr;
    ESValue* sp_ = nullptr;  ///< the entry that holds `acc`
    ZeroedArray<Frame> frames_;
    Frame* frame_ = nullptr;
    Frame* framesEnd_ = nullptr;
    bool asksHost_ = false;
    QString sourceText_;
    QString fileName_;
    std::deque<std::unique_ptr<ESCode>> templates_;
};

/// Fills a freshly constructed context: prototypes, classes, the whole library. Call it with the host's own
/// type; that is how the engine knows whether `checkInterrupt` is overridden. Answers the context.
template <class Host>
Host& initContext(Host& context) {
    constexpr bool overrides = !std::is_same_v<decltype(&Host::checkInterrupt), bool (ESContext::*)()>;
    context.asksHost_ = overrides || typeid(context) != typeid(Host);
    context.setUp();
    return context;
}

}  // namespace script

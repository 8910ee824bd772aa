#include "script/native_string.h"

#include "script/array_methods.h"
#include "script/context.h"
#include "script/limits.h"
#include "script/native_array.h"

#include <QStringTokenizer>

#include <algorithm>
#include <limits>

namespace script {

namespace {

enum Id : std::int32_t {
    Constructor = 0,
    FromCharCode = 1,
    ToString = 2,
    ValueOf = 3,
    CharAt = 4,
    CharCodeAt = 5,
    Concat = 6,
    IndexOf = 7,
    LastIndexOf = 8,
    LocaleCompare = 9,
    Match = 10,
    Replace = 11,
    Search = 12,
    Slice = 13,
    Split = 14,
    Substring = 15,
    ToLowerCase = 16,
    ToLocaleLowerCase = 17,
    ToUpperCase = 18,
    ToLocaleUpperCase = 19,
    Trim = 20,
};

// clang-format off
constexpr MethodRow methods[] = {
    {"toString", 0, ToString},
    {"valueOf", 0, ValueOf},
    {"charAt", 1, CharAt},
    {"charCodeAt", 1, CharCodeAt},
    {"concat", 0, Concat},
    {"indexOf", 2, IndexOf},
    {"lastIndexOf", 2, LastIndexOf},
    {"localeCompare", 1, LocaleCompare},
    {"match", 1, Match},
    {"replace", 2, Replace},
    {"search", 1, Search},
    {"slice", 2, Slice},
    {"split", 2, Split},
    {"substring", 2, Substring},
    {"toLowerCase", 0, ToLowerCase},
    {"toLocaleLowerCase", 0, ToLocaleLowerCase},
    {"toUpperCase", 0, ToUpperCase},
    {"toLocaleUpperCase", 0, ToLocaleUpperCase},
    {"trim", 0, Trim},
};
// clang-format on

constexpr MethodRow constructorMethods[] = {{"fromCharCode", 0, FromCharCode}};

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

/// One call of a method: the text that it works on, and its arguments.
class StringCall {
public:
    StringCall(ESContext& context, const ESText& text, std::uint32_t argc, const ESValue* argv)
        : context_(context), text_(text), argc_(argc), argv_(argv) {}

    ESValue run(std::int32_t id) const {
        switch (id) {
            case CharAt:
                return charAt();
            case CharCodeAt:
                return charCodeAt();
            case Concat:
                return concat();
            case IndexOf:
                return indexOf();
            case LastIndexOf:
                return lastIndexOf();
            case LocaleCompare:
                return number(QString::localeAwareCompare(view().toString(), argumentText(0)));
            case Match:
                return {};
            case Replace:
                return replace();
            case Search:
                return number(view().indexOf(argumentText(0)));
            case Slice:
                return slice();
            case Split:
                return split();
            case Substring:
                return substring();
            case ToLowerCase:
            case ToLocaleLowerCase:
                return recased(view().toString().toLower());
            case ToUpperCase:
            case ToLocaleUpperCase:
                return recased(view().toString().toUpper());
            default:
                return context_.newString(view().toString().simplified());
        }
    }

private:
    QStringView view() const { return context_.view(text_); }
    double length() const { return text_.length; }
    QString argumentText(std::uint32_t i) const { return context_.toStringValue(argv_[i]); }
    double integer(std::uint32_t i, double ifUndefined) const {
        return argv_[i].isUndefined() ? ifUndefined : context_.toInteger(argv_[i]);
    }
    static ESValue number(qsizetype value) { return {static_cast<double>(value)}; }

    /// The units from `start` to `end`, which are within the text.
    ESValue part(double start, double end) const {
        if (start >= end) return {internAtom(u"")};
        return context_.newString(
            view().sliced(static_cast<qsizetype>(start), static_cast<qsizetype>(end - start)));
    }

    /// Some letters become several in the other case.
    ESValue recased(const QString& text) const {
        if (text.size() > limits::stringLength) context_.throwRangeError(QStringLiteral("string too long"));
        return context_.newString(text);
    }

    ESValue charAt() const {
        const double place = context_.toInteger(argv_[0]);
        if (!(place >= 0 && place < length())) return {internAtom(u"")};
        const QChar unit = view()[static_cast<qsizetype>(place)];
        constexpr char16_t digitZero = u'0';
        if (unit >= digitZero && unit <= u'9')
            return {atomForIndex(static_cast<std::uint32_t>(unit.unicode() - digitZero))};
        return context_.newString(QStringView(&unit, 1));
    }

    ESValue charCodeAt() const {
        const double place = context_.toInteger(argv_[0]);
        if (!(place >= 0 && place < length())) return {notANumber};
        return {static_cast<double>(view()[static_cast<qsizetype>(place)].unicode())};
    }

    ESValue concat() const {
        ESValue result(&text_);
        for (std::uint32_t i = 0; i < argc_; ++i) {
            const ESValue next = context_.toText(argv_[i]);
            result = context_.concatenateTexts(result.asText(), next.asText());
        }
        return result;
    }

    ESValue indexOf() const {
        const QString searched = argumentText(0);
        const double from = std::clamp(integer(1, 0), 0.0, length() + 1);
        return number(view().indexOf(searched, static_cast<qsizetype>(from)));
    }

    ESValue lastIndexOf() const {
        constexpr double fromEnd = 2147483647;
        const QString searched = argumentText(0);
        const double from = std::clamp(integer(1, fromEnd), -length() - 1, length());
        return number(view().lastIndexOf(searched, static_cast<qsizetype>(from)));
    }

    ESValue replace() const {
        QString text = view().toString();
        const QString before = argumentText(0);
        const QString after = argumentText(1);
        const qsizetype growth = after.size() - before.size();
        if (growth > 0 && text.size() + text.count(before) * growth > limits::stringLength)
            context_.throwRangeError(QStringLiteral("string too long"));
        return context_.newString(text.replace(before, after));
    }

    ESValue slice() const {
        const auto place = [this](double offset) {
            return std::clamp(offset < 0 ? offset + length() : offset, 0.0, length());
        };
        const double start = place(integer(0, 0));
        return part(start, place(integer(1, length())));
    }

    ESValue substring() const {
        const double first = std::clamp(integer(0, 0), 0.0, length());
        const double second = std::clamp(integer(1, length()), 0.0, length());
        return part(std::min(first, second), std::max(first, second));
    }

    ESValue split() const {
        const QString separator = argumentText(0);
        const QString text = view().toString();
        ESObject* parts = context_.newArray(0, nullptr);
        std::uint32_t count = 0;
        LoopWatch watch(context_);
        for (const QStringView piece : qTokenize(text, separator)) {
            if (watch.isOver()) break;
            context_.putElement(parts, count++, ESValue(internAtom(piece)));
        }
        return {parts};
    }

    ESContext& context_;
    const ESText& text_;
    std::uint32_t argc_;
    const ESValue* argv_;
};

ESValue fromCharCode(ESContext& context, std::uint32_t argc, const ESValue* argv) {
    QString text;
    for (std::uint32_t i = 0; i < argc; ++i) text += QChar(context.toUint16(argv[i]));
    return context.newString(text);
}

/// The text of `object`: a wrapper's own when nobody has changed how it turns into text.
ESValue textOf(ESContext& context, ESObject* object, const ESClass* stringClass) {
    static const ESAtom* const toString = internAtom(u"toString");
    if (object->cls == stringClass) {
        const ESValue method = context.get(object, toString);
        const bool isOriginal = method.isObject() && method.asObject()->cls == stringClass &&
                                method.asObject()->builtinId == ToString;
        if (isOriginal && object->value.isString()) return object->value;
    }
    return context.toText(ESValue(object));
}

}  // namespace

ESNativeString::ESNativeString() : ESNativeClass(QStringLiteral("String")) {}

void ESNativeString::install(ESContext& context) {
    ESObject* prototype = context.stringPrototype;
    prototype->properties.append(context.arena(), knownAtoms().length, ReadOnly | DontEnumerate | DontDelete,
                                 ESValue(1.0));
    ESObject* constructor = installClassConstructor(context, prototype, 1);
    installMethods(context, constructor, "String", constructorMethods);
    installMethods(context, prototype, "String.prototype", methods);
}

void ESNativeString::get(ESValue& result, ESContext& context, ESObject* object, const ESAtom* propertyName) {
    // The text in a function is its name.
    const bool isWrapper = object->value.isString() && object->closure == nullptr;
    if (propertyName == knownAtoms().length && isWrapper)
        result = ESValue(static_cast<double>(object->value.asText().length));
    else
        ESNativeClass::get(result, context, object, propertyName);
}

void ESNativeString::put(ESContext& context, ESObject* object, const ESAtom* propertyName,
                         const ESValue& value) {
    if (propertyName != knownAtoms().length) ESNativeClass::put(context, object, propertyName, value);
}

void ESNativeString::call(ESContext& context, ESObject* function, ESObject* thisObject, std::uint32_t argc,
                          ESValue* argv) {
    const std::int32_t id = function->builtinId;
    switch (id) {
        case Constructor:
            argv[0] = context.toText(argv[0]);
            return;
        case FromCharCode:
            argv[0] = fromCharCode(context, argc, argv);
            return;
        case ToString:
        case ValueOf:
            if (thisObject->cls != this)
                context.throwTypeError(QStringLiteral("String.prototype.%1 called on non-String object")
                                           .arg(id == ToString ? u"toString" : u"valueOf"));
            argv[0] = thisObject->value;
            return;
        default: {
            if (id < CharAt || id > Trim)
                return ESNativeClass::call(context, function, thisObject, argc, argv);
            const ESValue text = textOf(context, thisObject, this);
            argv[0] = StringCall(context, text.asText(), argc, argv).run(id);
        }
    }
}

ESObject* ESNativeString::construct(ESContext& context, ESObject*, std::uint32_t argc, ESValue* argv) {
    return context.toObject(context.toText(argument(argc, argv, 0)));
}

}  // namespace script

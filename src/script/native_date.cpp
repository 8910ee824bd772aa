#include "script/native_date.h"

#include "script/context.h"

#include <QDateTime>

#include <cmath>
#include <limits>

namespace script {

namespace {

constexpr double millisecondsOfDay = 86400000;
constexpr double millisecondsOfHour = 3.6e6;
constexpr double millisecondsOfMinute = 60000;
constexpr double millisecondsOfSecond = 1000;
constexpr double largestTime = 8.64e15;
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

enum Id : std::int32_t {
    Constructor = 0,
    ToString,
    ToDateString,
    ToTimeString,
    ToLocaleString,
    ToLocaleDateString,
    ToLocaleTimeString,
    ValueOf,
    GetTime,
    GetFullYear,
    GetUTCFullYear,
    GetMonth,
    GetUTCMonth,
    GetDate,
    GetUTCDate,
    GetDay,
    GetUTCDay,
    GetHours,
    GetUTCHours,
    GetMinutes,
    GetUTCMinutes,
    GetSeconds,
    GetUTCSeconds,
    GetMilliseconds,
    GetUTCMilliseconds,
    GetTimezoneOffset,
    SetTime,
    SetMilliseconds,
    SetUTCMilliseconds,
    SetSeconds,
    SetUTCSeconds,
    SetMinutes,
    SetUTCMinutes,
    SetHours,
    SetUTCHours,
    SetDate,
    SetUTCDate,
    SetMonth,
    SetUTCMonth,
    SetFullYear,
    SetUTCFullYear,
    ToUTCString,
};

// clang-format off
constexpr MethodRow methods[] = {
    {"toString", 0, ToString},
    {"toDateString", 0, ToDateString},
    {"toTimeString", 0, ToTimeString},
    {"toLocaleString", 0, ToLocaleString},
    {"toLocaleDateString", 0, ToLocaleDateString},
    {"toLocaleTimeString", 0, ToLocaleTimeString},
    {"valueOf", 0, ValueOf},
    {"getTime", 0, GetTime},
    {"getFullYear", 0, GetFullYear},
    {"getUTCFullYear", 0, GetUTCFullYear},
    {"getMonth", 0, GetMonth},
    {"getUTCMonth", 0, GetUTCMonth},
    {"getDate", 0, GetDate},
    {"getUTCDate", 0, GetUTCDate},
    {"getDay", 0, GetDay},
    {"getUTCDay", 0, GetUTCDay},
    {"getHours", 0, GetHours},
    {"getUTCHours", 0, GetUTCHours},
    {"getMinutes", 0, GetMinutes},
    {"getUTCMinutes", 0, GetUTCMinutes},
    {"getSeconds", 0, GetSeconds},
    {"getUTCSeconds", 0, GetUTCSeconds},
    {"getMilliseconds", 0, GetMilliseconds},
    {"getUTCMilliseconds", 0, GetUTCMilliseconds},
    {"getTimezoneOffset", 0, GetTimezoneOffset},
    {"setTime", 1, SetTime},
    {"setMilliseconds", 1, SetMilliseconds},
    {"setUTCMilliseconds", 1, SetUTCMilliseconds},
    {"setSeconds", 2, SetSeconds},
    {"setUTCSeconds", 2, SetUTCSeconds},
    {"setMinutes", 2, SetMinutes},
    {"setUTCMinutes", 3, SetUTCMinutes},
    {"setHours", 4, SetHours},
    {"setUTCHours", 4, SetUTCHours},
    {"setDate", 1, SetDate},
    {"setUTCDate", 1, SetUTCDate},
    {"setMonth", 2, SetMonth},
    {"setUTCMonth", 2, SetUTCMonth},
    {"setFullYear", 3, SetFullYear},
    {"setUTCFullYear", 3, SetUTCFullYear},
    {"toUTCString", 0, ToUTCString},
};
// clang-format on

/// Year, month from 1, and day of a Julian day number, after Fliegel and Van Flandern (Communications of the
/// ACM 11, 1968).
struct CalendarDay {
    double year;
    double month;
    double day;

    static CalendarDay fromNumber(double number) {
        double l = number + 68569;
        const double n = std::floor(4 * l / 146097);
        l -= std::floor((146097 * n + 3) / 4);
        const double i = std::floor(4000 * (l + 1) / 1461001);
        l = l - std::floor(1461 * i / 4) + 31;
        const double j = std::floor(80 * l / 2447);
        const double day = l - std::floor(2447 * j / 80);
        l = std::floor(j / 11);
        return {100 * (n - 49) + i + l, j + 2 - 12 * l, day};
    }

    double number() const {
        const double a = month <= 2 ? -1 : 0;
        return day - 32075 + std::floor(1461 * (year + 4800 + a) / 4) +
               std::floor(367 * (month - 2 - a * 12) / 12) -
               std::floor(3 * std::floor((year + 4900 + a) / 100) / 4);
    }

    QDate date() const { return {static_cast<int>(year), static_cast<int>(month), static_cast<int>(day)}; }
};

bool isKnown(double time) {
    return std::fabs(time) <= largestTime;
}

double dayNumber(double time) {
    return std::floor(time / millisecondsOfDay);
}

double timeOfDay(double time) {
    const double rest = std::fmod(time, millisecondsOfDay);
    return rest < 0 ? rest + millisecondsOfDay : rest;
}

QDate dateOf(double time) {
    return isKnown(time) ? CalendarDay::fromNumber(dayNumber(time)).date() : QDate();
}

QTime clockOf(double time) {
    return isKnown(time) ? QTime::fromMSecsSinceStartOfDay(static_cast<int>(timeOfDay(time))) : QTime();
}

double now() {
    const QDateTime time = QDateTime::currentDateTime();
    return static_cast<double>(time.date().toJulianDay()) * millisecondsOfDay +
           time.time().msecsSinceStartOfDay();
}

/// NaN stays, what is beyond the last day becomes NaN.
double clipped(double time) {
    return time > largestTime ? notANumber : time + 0.0;
}

QString textOf(double time, std::int32_t id) {
    switch (id) {
        case ToDateString:
        case ToLocaleDateString:
            return dateOf(time).toString();
        case ToTimeString:
        case ToLocaleTimeString:
            return clockOf(time).toString();
        default:
            return QDateTime(dateOf(time), clockOf(time)).toString();
    }
}

double fieldOf(double time, std::int32_t id) {
    if (!isKnown(time)) return notANumber;
    const CalendarDay day = CalendarDay::fromNumber(dayNumber(time));
    const QTime clock = clockOf(time);
    switch (id) {
        case GetFullYear:
        case GetUTCFullYear:
            return day.year;
        case GetMonth:
        case GetUTCMonth:
            return day.month - 1;
        case GetDate:
        case GetUTCDate:
            return day.day;
        case GetDay:
        case GetUTCDay:
            return day.date().dayOfWeek();
        case GetHours:
        case GetUTCHours:
            return clock.hour();
        case GetMinutes:
        case GetUTCMinutes:
            return clock.minute();
        case GetSeconds:
        case GetUTCSeconds:
            return clock.second();
        case GetMilliseconds:
        case GetUTCMilliseconds:
            return clock.msec();
        default:
            return static_cast<double>(QDateTime(day.date(), clock).toMSecsSinceEpoch());
    }
}

/// The arguments of a setter; one that was not given keeps the present value of its field.
class Fields {
public:
    Fields(ESContext& context, std::uint32_t argc, const ESValue* argv)
        : context_(context), argc_(argc), argv_(argv) {}

    double next(double present) {
        const ESValue value = argument(argc_, argv_, place_++);
        // The first has no default: nothing is no number.
        return value.isUndefined() && place_ > 1 ? present : context_.toNumber(value);
    }

private:
    ESContext& context_;
    std::uint32_t argc_;
    const ESValue* argv_;
    std::uint32_t place_ = 0;
};

double setTimeOfDay(double time, std::int32_t id, Fields fields) {
    double hours = fieldOf(time, GetHours);
    double minutes = fieldOf(time, GetMinutes);
    double seconds = fieldOf(time, GetSeconds);
    if (id == SetHours || id == SetUTCHours) hours = fields.next(hours);
    if (id >= SetMinutes) minutes = fields.next(minutes);
    if (id >= SetSeconds) seconds = fields.next(seconds);
    const double milliseconds = fields.next(fieldOf(time, GetMilliseconds));
    return dayNumber(time) * millisecondsOfDay + std::floor(hours) * millisecondsOfHour +
           std::floor(minutes) * millisecondsOfMinute + std::floor(seconds) * millisecondsOfSecond +
           std::floor(milliseconds);
}

double setDay(double time, std::int32_t id, Fields fields) {
    constexpr double largestField = 1e9;
    double year = fieldOf(time, GetFullYear);
    double month = fieldOf(time, GetMonth);
    if (id >= SetFullYear) year = fields.next(year);
    if (id >= SetMonth) month = fields.next(month);
    const double day = fields.next(fieldOf(time, GetDate));
    for (const double field : {year, month, day})
        if (!(std::fabs(field) <= largestField)) return notANumber;
    const CalendarDay calendarDay{std::trunc(year), std::trunc(month) + 1, std::trunc(day)};
    if (!calendarDay.date().isValid()) return notANumber;
    return calendarDay.number() * millisecondsOfDay + timeOfDay(time);
}

}  // namespace

ESNativeDate::ESNativeDate() : ESNativeClass(QStringLiteral("Date")) {}

void ESNativeDate::install(ESContext& context) {
    constexpr double constructorArguments = 7;
    context.defineProperty(context.datePrototype, ReadOnly | DontEnumerate | DontDelete, knownAtoms().length,
                           ESValue(constructorArguments));
    installClassConstructor(context, context.datePrototype, 1);
    installMethods(context, context.datePrototype, "Date.prototype", methods);
}

void ESNativeDate::call(ESContext& context, ESObject* function, ESObject* thisObject, std::uint32_t argc,
                        ESValue* argv) {
    const std::int32_t id = function->builtinId;
    if (id <= Constructor || id > ToUTCString)
        return ESNativeClass::call(context, function, thisObject, argc, argv);
    if (id == GetTimezoneOffset) {
        argv[0] = ESValue(0.0);
        return;
    }
    if (id != SetTime && thisObject->cls != this)
        context.throwTypeError(QStringLiteral("Date object required"));
    const double time = thisObject->value.isNumber() ? thisObject->value.asNumber() : 0;
    if (id < SetTime || id == ToUTCString) {
        const bool isText = id < ValueOf || id == ToUTCString;
        if (isText)
            argv[0] = context.newString(textOf(time, id));
        else
            argv[0] = ESValue(id == ValueOf ? time : fieldOf(time, id));
        return;
    }
    const Fields fields(context, argc, argv);
    const double newTime = id == SetTime  ? context.toNumber(argv[0])
                           : id < SetDate ? setTimeOfDay(time, id, fields)
                                          : setDay(time, id, fields);
    thisObject->value = ESValue(clipped(newTime));
    argv[0] = thisObject->value;
}

ESObject* ESNativeDate::construct(ESContext& context, ESObject*, std::uint32_t argc, ESValue*) {
    ESObject* date = context.newObject(context.datePrototype, this);
    date->value = ESValue(argc == 0 ? now() : 0.0);
    return date;
}

}  // namespace script

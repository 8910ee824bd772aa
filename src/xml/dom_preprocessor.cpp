#include "xml/dom_preprocessor.h"

#include "project/base/path.h"
#include "support/hexception.h"
#include "support/log.h"
#include "xml/directives.h"

#include <QDomElement>
#include <QFile>
#include <QFileInfo>
#include <QTextCodec>
#include <QXmlStreamReader>

#include <functional>
#include <optional>
#include <vector>

namespace xml {

namespace {

using project::MacroEngine;
using project::MacroTable;
using support::LogLevel;
using support::logMessage;

/// What is wrong with a text, by the words of the parser.
struct SyntaxError {
    QString message;
    int line = 0;
    int column = 0;
};

std::optional<SyntaxError> parse(const QString& text, QDomDocument& document, int maxDepth) {
    int depth = 0;
    for (QXmlStreamReader reader(text); !reader.atEnd();) {
        const auto token = reader.readNext();
        depth += token == QXmlStreamReader::StartElement ? 1 : token == QXmlStreamReader::EndElement ? -1 : 0;
        if (depth > maxDepth)
            return SyntaxError{QStringLiteral("elements nested too deep"),
                               static_cast<int>(reader.lineNumber()),
                               static_cast<int>(reader.columnNumber())};
    }
    SyntaxError error;
    if (document.setContent(text, &error.message, &error.line, &error.column)) return std::nullopt;
    return error;
}

/// The content of a regular file; what is none cannot be told to end.
std::optional<QByteArray> readFile(const QString& path) {
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly)) return std::nullopt;
    return file.readAll();
}

/// One pass over a document. A node whose place changes is moved once, to its final place.
class Pass {
public:
    explicit Pass(XmlPP& preprocessor) : pp_(preprocessor) {}

    void run(const QString& path, bool expand) {
        open_.push_back({pp_.document.documentElement(), {}, {}, {path, expand, 0}});
        while (!open_.empty()) step();
    }

private:
    struct Scope {
        QString path;
        bool expand;
        int includeDepth;
    };
    /// A chain of siblings under way. With an `output`, its nodes move there, in front of `before`.
    struct Level {
        QDomNode next;
        QDomNode output;
        QDomNode before;
        Scope scope;
        QDomNode source = {};  ///< what the chain is taken from lives as long as the chain
    };
    using Directive = bool (Pass::*)(QDomElement&, Level&);
    struct DirectiveRow {
        const char* tag;
        Directive handle;
    };
    static const DirectiveRow directiveRows[];

    static Directive directiveOf(const QDomElement& element) {
        for (const DirectiveRow* row = directiveRows; row->tag; ++row)
            if (element.tagName() == QLatin1String(row->tag)) return row->handle;
        return nullptr;
    }

    void step() {
        if (open_.back().next.isNull()) {
            open_.pop_back();
            return;
        }
        Level level = open_.back();
        const QDomNode node = level.next;
        open_.back().next = node.nextSibling();
        QDomElement element = node.toElement();
        if (element.isNull()) {
            place(node, level);
            return;
        }
        expandAttributes(element, level.scope.expand);
        const Directive directive = directiveOf(element);
        const bool isRoot = element.parentNode().isDocument();
        if (directive && isRoot && directive != &Pass::include) {
            warn(QStringLiteral("the root <%1> is not carried out").arg(element.tagName()));
        } else if (directive && (this->*directive)(element, level)) {
            return;
        }
        place(element, level);
        openChildren(element, level.scope);
    }

    static void place(const QDomNode& node, Level& level) {
        if (level.output.isNull()) return;
        if (level.before.isNull()) {
            level.output.appendChild(node);
        } else {
            level.output.insertBefore(node, level.before);
        }
    }

    void openChildren(const QDomElement& element, const Scope& scope) {
        if (element.hasChildNodes()) open_.push_back({element.firstChild(), {}, {}, scope});
    }

    /// Puts `node` in the place of a directive.
    static void substitute(QDomElement& directive, const QDomNode& node, Level& level) {
        if (level.output.isNull()) {
            directive.parentNode().replaceChild(node, directive);
        } else {
            place(node, level);
        }
    }

    /// Puts the children of `container`, walked with `scope`, in the place of a directive. A null container
    /// has none.
    bool replace(QDomElement& directive, const QDomElement& container, const Level& level,
                 const Scope& scope) {
        const bool moves = !level.output.isNull();
        const QDomNode output = moves ? level.output : directive.parentNode();
        const QDomNode before = moves ? level.before : directive.nextSibling();
        directive.parentNode().removeChild(directive);
        const QDomNode source = container.parentNode().isNull() ? QDomNode(container) : QDomNode(directive);
        if (container.hasChildNodes())
            open_.push_back({container.firstChild(), output, before, scope, source});
        return true;
    }

    bool select(QDomElement& directive, const QDomElement& container, const Level& level) {
        return replace(directive, container, level, level.scope);
    }

    // --- Expanding ---

    QString expanded(const QString& text) {
        if (!project::macroEngine || !text.contains(u'$')) return text;
        if (expandedLength_ > XmlPP::maxExpandedLength) return text;
        QString result = project::macroEngine->expand(pp_.macros, text, true, true);
        expandedLength_ += result.size();
        if (expandedLength_ > XmlPP::maxExpandedLength) warn(QStringLiteral("too much text from macros"));
        return result;
    }

    void expandAttribute(QDomElement& element, const QString& name) {
        const QString value = element.attribute(name);
        if (value.contains(u'$')) element.setAttribute(name, expanded(value));
    }

    void expandAttributes(QDomElement& element, bool all) {
        static const QString listAttribute = QStringLiteral("expand_attributes");
        if (all) {
            const QDomNamedNodeMap attributes = element.attributes();
            QStringList names;
            for (int i = 0; i < attributes.count(); ++i) names.append(attributes.item(i).nodeName());
            for (const QString& name : names) expandAttribute(element, name);
        } else if (element.hasAttribute(listAttribute)) {
            const QStringList names = element.attribute(listAttribute).split(u',', Qt::SkipEmptyParts);
            for (const QString& name : names) expandAttribute(element, name);
            element.removeAttribute(listAttribute);
        }
    }

    void warn(const QString& text) { pp_.warning(QLatin1String(messagePrefix) + text); }

    // --- Directives: each answers false where the element stays as an ordinary one ---

    bool testIf(QDomElement& element, Level& level) {
        const QDomNamedNodeMap attributes = element.attributes();
        if (attributes.count() != 1) {
            warn(QLatin1String(oneConditionRequired));
            return false;
        }
        const QDomNode condition = attributes.item(0);
        const bool holds = listHolds(condition.nodeValue(), pp_.macros[condition.nodeName()]);
        return select(element, holds == (element.tagName() == u"if") ? element : QDomElement(), level);
    }

    bool testDefined(QDomElement& element, Level& level) {
        const bool defined = pp_.macros.contains(element.attribute(QStringLiteral("name")));
        return select(element, defined == (element.tagName() == u"ifdef") ? element : QDomElement(), level);
    }

    bool choose(QDomElement& element, Level& level) {
        const QString value = pp_.macros[element.attribute(QStringLiteral("name"))];
        QDomElement container;
        for (QDomElement child = element.firstChildElement(); !child.isNull();
             child = child.nextSiblingElement()) {
            if (level.scope.expand) expandAttributes(child, true);
            if (child.tagName() == u"default") container = child;
            if (child.tagName() == u"case" && listHolds(child.attribute(QStringLiteral("value")), value)) {
                container = child;
                break;
            }
        }
        return select(element, container, level);
    }

    bool define(QDomElement& element, Level& level) {
        const QString name = QStringLiteral("name");
        const QString value = QStringLiteral("value");
        if (element.hasAttribute(name) && element.hasAttribute(value)) {
            pp_.macros.insert(element.attribute(name), element.attribute(value));
        } else {
            logMessage(LogLevel::Warning, support::LogLineFeed,
                       "%smissing name and/or value in <define_macro>", messagePrefix);
        }
        const QString expandMacros = QStringLiteral("expand_macros");
        if (element.hasAttribute(expandMacros))
            open_.back().scope.expand = element.attribute(expandMacros) == u"Yes";
        return select(element, {}, level);
    }

    bool expandDefinition(QDomElement& element, Level& level) {
        const QString name = element.attribute(QStringLiteral("name"));
        QString text = pp_.macros.value(name);
        if (text.isNull() && project::macroEngine) text = project::macroEngine->macroValue(name);
        if (text.isNull()) text = element.attribute(QStringLiteral("default"), QString());
        if (text.isNull()) return select(element, {}, level);
        if (element.hasAttribute(QStringLiteral("lowercase"))) text = text.toLower();
        if (element.hasAttribute(QStringLiteral("underscore_spaces"))) text.replace(u' ', u'_');
        substitute(element, pp_.document.createTextNode(text), level);
        return true;
    }

    bool include(QDomElement& element, Level& level) {
        const std::optional<QString> path = includedPath(element, level.scope);
        if (!path) return false;
        const std::optional<QByteArray> bytes = readFile(*path);
        if (!bytes) {
            logMessage(LogLevel::Error, support::LogLineFeed,
                       "XmlPP::processConditionals could not open include file %s", qUtf8Printable(*path));
            return false;
        }
        if (element.attribute(QStringLiteral("type")) == u"text") {
            substitute(element, textElement(element, *bytes), level);
            return true;
        }
        // Every open level is an element deeper, or more.
        const int maxDepth = XmlPP::maxElementDepth - static_cast<int>(open_.size());
        QDomDocument file;
        if (const auto error = parse(QString::fromUtf8(*bytes), file, maxDepth)) {
            logMessage(LogLevel::Error, support::LogLineFeed,
                       "XmlPP: error reading XML - %s on line %d column %d of include file %s",
                       qUtf8Printable(error->message), error->line, error->column, qUtf8Printable(*path));
            return false;
        }
        QDomElement root = pp_.document.importNode(file.documentElement(), true).toElement();
        const Scope inner = scopeOfInclude(element, *path, level.scope);
        if (inner.expand) expandAttributes(root, true);
        if (element.hasAttribute(QStringLiteral("no_root")) && !element.parentNode().isDocument())
            return replace(element, root, level, inner);
        substitute(element, root, level);
        openChildren(root, inner);
        return true;
    }

    std::optional<QString> includedPath(const QDomElement& element, const Scope& scope) {
        QString name = element.attribute(QStringLiteral("filename"));
        if (name.isEmpty()) {
            logMessage(LogLevel::Error, support::LogLineFeed, "%s%s", messagePrefix, missingFileName);
            return std::nullopt;
        }
        if (element.hasAttribute(QStringLiteral("expand_macros"))) name = expanded(name);
        const QString path =
            project::isAbsolutePath(name) ? name : QFileInfo(scope.path).path() + u'/' + name;
        const bool isTooDeep = scope.includeDepth >= XmlPP::maxIncludeDepth;
        includedBytes_ += QFileInfo(path).size();
        if (!isTooDeep && ++includes_ <= XmlPP::maxIncludes && includedBytes_ <= XmlPP::maxIncludedBytes)
            return path;
        warn(QString::fromLatin1(isTooDeep ? includeTooDeep : includesTooMuch).arg(path));
        return std::nullopt;
    }

    Scope scopeOfInclude(const QDomElement& element, const QString& path, const Scope& outer) {
        Scope scope{path, outer.expand, outer.includeDepth + 1};
        const QString macros = QStringLiteral("macros");
        if (element.hasAttribute(macros) &&
            (scope.expand || element.hasAttribute(QStringLiteral("expand_macros")))) {
            pp_.macros = MacroEngine::mergeMacros(pp_.macros, readMacroList(element.attribute(macros)));
            scope.expand = true;
        }
        return scope;
    }

    QDomElement textElement(const QDomElement& include, const QByteArray& bytes) {
        QDomElement element =
            pp_.document.createElement(include.attribute(QStringLiteral("tag"), QStringLiteral("pre")));
        for (const char* name : {"class", "id", "style"}) {
            const QString value = include.attribute(QLatin1String(name));
            if (!value.isEmpty()) element.setAttribute(QLatin1String(name), value);
        }
        const QTextCodec* codec =
            QTextCodec::codecForName(include.attribute(QStringLiteral("encoding")).toLatin1());
        element.appendChild(
            pp_.document.createTextNode(codec ? codec->toUnicode(bytes) : QString::fromUtf8(bytes)));
        return element;
    }

    XmlPP& pp_;
    std::vector<Level> open_;
    int includes_ = 0;
    qint64 includedBytes_ = 0;
    qsizetype expandedLength_ = 0;
};

const Pass::DirectiveRow Pass::directiveRows[] = {
    {"if", &Pass::testIf},           {"ifnot", &Pass::testIf},
    {"ifdef", &Pass::testDefined},   {"ifndef", &Pass::testDefined},
    {"switch", &Pass::choose},       {"define", &Pass::define},
    {"define_macro", &Pass::define}, {"expand_definition", &Pass::expandDefinition},
    {"include", &Pass::include},     {nullptr, nullptr},
};

}  // namespace

XmlPP::XmlPP() : macros(project::macroEngine ? project::macroEngine->globalMacros : MacroTable()) {}

void XmlPP::load(const QString& path) {
    const std::optional<QByteArray> bytes = readFile(path);
    if (!bytes) throw support::HException("couldn't read " + path.toStdString());
    if (const auto error = parse(QString::fromUtf8(*bytes), document, maxElementDepth))
        throw support::HException(error->message.toStdString(), error->line, error->column);
}

void XmlPP::processConditionals(const QString& path, bool expand) {
    Pass(*this).run(path, expand);
}

void XmlPP::warning(const QString& text) {
    support::logMessage(support::LogLevel::Warning, support::LogLineFeed, "%s", qUtf8Printable(text));
}

}  // namespace xml

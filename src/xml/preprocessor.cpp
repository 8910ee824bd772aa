#include "xml/preprocessor.h"

#include "expressions/simple_expression_parser.h"
#include "project/base/path.h"
#include "support/log.h"
#include "xml/directives.h"
#include "xml/generated_elements.h"
#include "xml/owned_chain.h"

#include <QFileInfo>

#include <optional>
#include <utility>
#include <vector>

namespace xml {

namespace {

using project::MacroEngine;
using project::MacroTable;

/// One pass over a document. A chain of siblings is taken off its parent and its nodes are put back one by
/// one, each at its final place, so that a node moves once however deep the directives around it nest.
class Pass {
public:
    explicit Pass(XMLPP2& document) : document_(document) {}

    void run(const QString& path, const MacroTable& macros, bool expand) {
        Scope scope{macros, path, expand, 0, 0};
        processRoot(scope);
        while (!open_.empty()) step();
    }

private:
    /// What holds for a chain of siblings.
    struct Scope {
        MacroTable macros;
        QString path;
        bool expand;
        int includeDepth;
        int putDepth;
    };
    /// A chain under way and the node that its nodes become children of.
    struct Level {
        OwnedChain chain;
        XMLNode* output;
        Scope scope;
    };
    using Directive = bool (Pass::*)(std::unique_ptr<XMLElement>&, Level&);
    struct DirectiveRow {
        const char* tag;
        Directive handle;
    };
    static const DirectiveRow directiveRows[];

    static Directive directiveOf(const XMLElement& element) {
        for (const DirectiveRow* row = directiveRows; row->tag; ++row)
            if (element.tagName() == row->tag) return row->handle;
        return nullptr;
    }

    void step() {
        if (open_.back().chain.isEmpty()) {
            open_.pop_back();
            return;
        }
        Level& level = open_.back();
        std::unique_ptr<XMLNode> node = level.chain.takeFirst();
        if (!asElement(node.get())) {
            level.output->appendChild(node.release());
            return;
        }
        std::unique_ptr<XMLElement> element(asElement(node.release()));
        if (level.scope.expand) expandAttributes(*element, level.scope.macros);
        const Directive directive = directiveOf(*element);
        if (directive && (this->*directive)(element, level)) return;
        keep(std::move(element), level);
    }

    /// Puts an ordinary element in its place; its children come next.
    void keep(std::unique_ptr<XMLElement> element, Level& level) {
        XMLElement* const kept = element.release();
        level.output->appendChild(kept);
        open(kept, kept, Scope(level.scope));
    }

    void open(XMLElement* container, XMLNode* output, Scope scope) {
        if (container->firstChild())
            open_.push_back({OwnedChain(container->takeChildren()), output, std::move(scope)});
    }

    /// Only an include can take the place of the root.
    void processRoot(Scope& scope) {
        XMLElement* root = asElement(document_.root());
        if (!root) return;
        if (scope.expand) expandAttributes(*root, scope.macros);
        if (root->tagName() == "include") {
            Scope inner = scope;
            if (std::unique_ptr<XMLElement> included = readInclude(*root, inner)) {
                inheritAttributes(*root, *included);
                document_.setRoot(std::move(included));
                root = asElement(document_.root());
                scope = inner;
            }
        } else if (directiveOf(*root)) {
            warn(QStringLiteral("the root <%1> is not carried out").arg(QString::fromUtf8(root->tagName())));
        }
        open(root, root, scope);
    }

    // --- Expanding ---

    QString expanded(const MacroTable& macros, const QString& text) {
        if (!project::macroEngine || !text.contains(u'$')) return text;
        if (work_.expandedLength > XMLPP2::maxExpandedLength) return text;
        QString result = project::macroEngine->expand(macros, text, true, true);
        work_.expandedLength += result.size();
        if (work_.expandedLength > XMLPP2::maxExpandedLength)
            warn(QStringLiteral("too much text from macros"));
        return result;
    }

    void expandAttributes(XMLElement& element, const MacroTable& macros) {
        std::vector<XMLAttribute> changed;
        for (const XMLAttribute& attribute : element.attributes()) {
            if (!attribute.value.contains('$')) continue;
            const QByteArray value = expanded(macros, QString::fromUtf8(attribute.value)).toUtf8();
            if (value != attribute.value) changed.push_back({attribute.name, value.isNull() ? "" : value});
        }
        for (XMLAttribute& attribute : changed) element.setAttribute(attribute.name, attribute.value);
    }

    // --- Macros ---

    /// The value of a name, which exists from then on.
    QString lookedUp(Scope& scope, const QString& name) {
        const auto known = scope.macros.constFind(name);
        if (known != scope.macros.constEnd()) return *known;
        define(scope, name, QString());
        return {};
    }

    void define(Scope& scope, const QString& name, const QString& value) {
        if (mayCopy(scope)) scope.macros.insert(name, value);
    }

    void overlay(Scope& scope, const QString& list) {
        if (mayCopy(scope)) scope.macros = MacroEngine::mergeMacros(scope.macros, readMacroList(list));
    }

    /// A table is copied when an inner level changes it. What all copies may cost is bounded.
    bool mayCopy(const Scope& scope) {
        if (scope.macros.isDetached()) return true;
        const bool hadRoom = work_.macrosCopied <= XMLPP2::maxMacrosCopied;
        work_.macrosCopied += scope.macros.size();
        const bool hasRoom = work_.macrosCopied <= XMLPP2::maxMacrosCopied;
        if (hadRoom && !hasRoom) warn(QStringLiteral("too many macros in too many places"));
        return hasRoom;
    }

    void warn(const QString& text) { document_.warning(QLatin1String(messagePrefix) + text); }

    // --- Directives: each answers false where the element stays as an ordinary one ---

    /// Puts the children of `container`, which is the directive or below it, in the directive's place.
    bool replace(std::unique_ptr<XMLElement>& directive, XMLElement* container, Level& level) {
        const std::unique_ptr<XMLElement> dropped = std::move(directive);
        if (container) open(container, level.output, Scope(level.scope));
        return true;
    }

    bool testIf(std::unique_ptr<XMLElement>& element, Level& level) {
        if (element->attributes().size() != 1) {
            warn(QLatin1String(oneConditionRequired));
            return false;
        }
        const XMLAttribute& condition = element->attributes().front();
        const QString value = lookedUp(level.scope, QString::fromUtf8(condition.name));
        const bool holds = listHolds(QString::fromUtf8(condition.value), value);
        return replace(element, holds == (element->tagName() == "if") ? element.get() : nullptr, level);
    }

    bool testExpression(std::unique_ptr<XMLElement>& element, Level& level) {
        const QString expression = element->text("expression");
        if (expression.isEmpty()) return false;
        bool ok = false;
        const bool holds = parser_.evaluateBoolean(expanded(level.scope.macros, expression), &ok);
        return replace(element, ok && holds ? element.get() : nullptr, level);
    }

    bool testDefined(std::unique_ptr<XMLElement>& element, Level& level) {
        const bool defined = level.scope.macros.contains(element->text("name"));
        return replace(element, defined == (element->tagName() == "ifdef") ? element.get() : nullptr, level);
    }

    bool select(std::unique_ptr<XMLElement>& element, Level& level) {
        const QString value = lookedUp(level.scope, element->text("name"));
        XMLElement* container = nullptr;
        for (XMLNode* node = element->firstChild(); node; node = node->nextSibling()) {
            XMLElement* const child = asElement(node);
            if (!child) continue;
            if (level.scope.expand) expandAttributes(*child, level.scope.macros);
            if (child->tagName() == "default") container = child;
            if (child->tagName() == "case" && listHolds(child->text("value"), value)) {
                container = child;
                break;
            }
        }
        return replace(element, container, level);
    }

    bool define(std::unique_ptr<XMLElement>& element, Level& level) {
        const std::unique_ptr<XMLElement> dropped = std::move(element);
        const QString name = dropped->text("name");
        if (!dropped->hasAttribute("name")) {
            warn(QStringLiteral("missing name in <define>"));
        } else if (dropped->hasAttribute("value")) {
            define(level.scope, name, dropped->text("value"));
        } else if (dropped->hasAttribute("expression")) {
            if (const auto number = evaluated(level, dropped->text("expression")))
                define(level.scope, name, QString::number(*number));
        } else if (dropped->hasAttribute("hex_expression")) {
            if (const auto number = evaluated(level, dropped->text("hex_expression")))
                define(level.scope, name, QStringLiteral("0x") + QString::number(*number, 16).toUpper());
        } else {
            warn(QStringLiteral("missing value or expression in <define>"));
        }
        if (dropped->hasAttribute("expand_macros"))
            level.scope.expand = dropped->attribute("expand_macros") == "Yes";
        return true;
    }

    std::optional<std::uint32_t> evaluated(const Level& level, const QString& expression) {
        bool ok = false;
        const auto value = parser_.evaluateUnsigned(expanded(level.scope.macros, expression), &ok);
        return ok ? std::optional(static_cast<std::uint32_t>(value)) : std::nullopt;
    }

    bool include(std::unique_ptr<XMLElement>& element, Level& level) {
        Scope inner = level.scope;
        std::unique_ptr<XMLElement> root = readInclude(*element, inner);
        if (!root) return false;
        inheritAttributes(*element, *root);
        const bool isContainer = root->tagName() == "envelope" || element->hasAttribute("no_root");
        element.reset();
        if (isContainer) {
            open(root.get(), level.output, std::move(inner));
        } else {
            XMLElement* const kept = root.release();
            level.output->appendChild(kept);
            open(kept, kept, std::move(inner));
        }
        return true;
    }

    /// Reads the file that an include names, and makes `scope` that of its content. Null when there is none.
    std::unique_ptr<XMLElement> readInclude(const XMLElement& element, Scope& scope) {
        const QString name = expanded({}, element.text("filename"));
        if (name.isEmpty()) {
            warn(QLatin1String(missingFileName));
            return nullptr;
        }
        const QString path =
            project::isAbsolutePath(name) ? name : QFileInfo(scope.path).path() + u'/' + name;
        if (scope.includeDepth >= XMLPP2::maxIncludeDepth) {
            warn(QString::fromLatin1(includeTooDeep).arg(path));
            return nullptr;
        }
        if (!document_.countInclude(QFileInfo(path).size())) {
            warn(QString::fromLatin1(includesTooMuch).arg(path));
            return nullptr;
        }
        std::unique_ptr<XMLElement> included = parseFile(path);
        if (!included) return nullptr;
        scope.path = path;
        ++scope.includeDepth;
        const bool expands = scope.expand || element.hasAttribute("expand_macros");
        if (expands && element.hasAttribute("macros")) {
            overlay(scope, element.text("macros"));
            scope.expand = true;
        }
        if (scope.expand) expandAttributes(*included, scope.macros);
        return included;
    }

    /// The root of another file, read by the document, whose own root stays. Null, after a warning, when
    /// there is none.
    std::unique_ptr<XMLElement> parseFile(const QString& path) {
        const QFileInfo file(path);
        std::unique_ptr<XMLNode> before = document_.takeRoot();
        // What is no regular file may never end.
        const bool isReadable = file.isFile();
        const bool parsed = isReadable && document_.parse(path);
        if (!isReadable) document_.setError("couldn't read " + path.toUtf8());
        std::unique_ptr<XMLNode> root = document_.takeRoot();
        document_.setRoot(std::move(before));
        if (parsed && root) return std::unique_ptr<XMLElement>(asElement(root.release()));
        // What is no document at all counts as empty, whatever stopped the parse.
        if (root || document_.errorText().startsWith("couldn't read")) {
            warn(QStringLiteral("error \"%1\" in include file %2 line:%3")
                     .arg(QString::fromUtf8(document_.errorText()), path,
                          QString::number(document_.errorLine())));
        } else {
            warn(QStringLiteral("error: include file '%1' is empty").arg(path));
        }
        return nullptr;
    }

    static void inheritAttributes(const XMLElement& from, XMLElement& to) {
        for (const QString& name : from.text("inherit_attributes").split(u';', Qt::SkipEmptyParts))
            to.setAttribute(name.toUtf8(), from.attribute(name.toUtf8()));
    }

    bool repeat(std::unique_ptr<XMLElement>& element, Level& level) {
        const std::unique_ptr<XMLElement> loop = std::move(element);
        for (const char* needed : {"index", "start", "end", "incr"}) {
            if (loop->hasAttribute(needed) && loop->firstChild()) continue;
            warn(QStringLiteral("<for index=\"i\" start=\"0\" end=\"32\" incr=\"1\">"));
            return true;
        }
        const auto number = [&](const char* attribute) {
            bool ok = false;
            const auto value = parser_.evaluateUnsigned(loop->text(attribute), &ok);
            return ok ? static_cast<std::uint32_t>(value) : 0U;
        };
        const auto term = [&](const char* attribute) {
            bool ok = false;
            const auto value =
                parser_.evaluateInteger(expanded(level.scope.macros, loop->text(attribute)), &ok);
            return ok ? static_cast<std::uint32_t>(value) : 0U;
        };
        IndexRange range{loop->text("index"), number("start"), number("end"), number("incr"), 0, 1};
        if (loop->hasAttribute("add")) {
            range.offset = term("add");
        } else if (loop->hasAttribute("sub")) {
            range.offset = 0U - term("sub");
        }
        if (loop->hasAttribute("mul")) range.multiplier = term("mul");
        if (range.start < range.end && range.increment == 0) {
            warn(QStringLiteral("<for> with an increment of 0"));
            return true;
        }
        generate(*loop, level, IndexTables(range));
        return true;
    }

    bool repeatForEach(std::unique_ptr<XMLElement>& element, Level& level) {
        const std::unique_ptr<XMLElement> loop = std::move(element);
        const auto expand = [&](const QString& text) { return expanded(level.scope.macros, text); };
        const auto report = [&](const QString& text) { warn(text); };
        generate(*loop, level, ProductTables(*loop, expand, report));
        return true;
    }

    /// Puts a copy of the loop's body for each table in front of what is left of the chain.
    template <typename Tables>
    void generate(const XMLElement& loop, Level& level, Tables tables) {
        if (countElements(loop) == 1) return;  // rounds that make nothing would not use up the bound
        OwnedChain generated;
        const auto expand = [this](const MacroTable& macros, const QString& text) {
            return expanded(macros, text);
        };
        while (const std::optional<MacroTable> macros = tables.next()) {
            for (const XMLNode* node = loop.firstChild(); node; node = node->nextSibling()) {
                const XMLElement* const child = asElement(node);
                if (!child) continue;
                std::unique_ptr<XMLElement> copy =
                    substitutedCopy(document_, *child, *macros, expand, work_.copiesLeft);
                if (!copy) {
                    warn(QStringLiteral("more than %1 copies").arg(XMLPP2::maxCopies));
                    level.chain.prepend(std::move(generated));
                    return;
                }
                generated.append(std::move(copy));
            }
        }
        level.chain.prepend(std::move(generated));
    }

    bool storeDefinition(std::unique_ptr<XMLElement>& element, Level&) {
        if (!element->hasAttribute("name")) return false;
        const QString name = element->text("name");
        const qsizetype elements = countElements(*element);
        document_.definitions[name] = {std::move(element), elements};
        return true;
    }

    bool put(std::unique_ptr<XMLElement>& element, Level& level) {
        if (!element->hasAttribute("name")) return false;
        const QString name = element->text("name");
        const auto definition = document_.definitions.find(name);
        if (definition == document_.definitions.end()) {
            warn(QStringLiteral("xmlput cannot fine xmldef named ") + name);
            return false;
        }
        if (level.scope.putDepth >= XMLPP2::maxPutDepth) {
            warn(QStringLiteral("xmldef named %1 is put too deep in itself").arg(name));
            return false;
        }
        const XMLPP2::Definition& found = definition->second;
        if (found.elements > work_.copiesLeft) {
            warn(QStringLiteral("more than %1 copies").arg(XMLPP2::maxCopies));
            return false;
        }
        work_.copiesLeft -= found.elements;
        const std::unique_ptr<XMLNode> clone(document_.cloneNode(found.element.get()));
        Scope inner = level.scope;
        ++inner.putDepth;
        const bool expands = inner.expand || element->hasAttribute("expand_macros");
        if (expands && element->hasAttribute("macros")) {
            overlay(inner, element->text("macros"));
            inner.expand = true;
        }
        element.reset();
        open(asElement(clone.get()), level.output, std::move(inner));
        return true;
    }

    XMLPP2& document_;
    XMLPP2::Work& work_ = document_.work;
    expressions::SimpleExpressionParser& parser_ = expressions::simpleExpressionParser();
    std::vector<Level> open_;
};

const Pass::DirectiveRow Pass::directiveRows[] = {
    {"if", &Pass::testIf},
    {"ifnot", &Pass::testIf},
    {"ifex", &Pass::testExpression},
    {"ifdef", &Pass::testDefined},
    {"ifndef", &Pass::testDefined},
    {"switch", &Pass::select},
    {"define", &Pass::define},
    {"include", &Pass::include},
    {"for", &Pass::repeat},
    {"foreach", &Pass::repeatForEach},
    {"xmldef", &Pass::storeDefinition},
    {"xmlput", &Pass::put},
    {nullptr, nullptr},
};

}  // namespace

void XMLPP2::processConditionals(const QString& path, const project::MacroTable& macros, bool expand) {
    Pass(*this).run(path, macros, expand);
}

void logWarning(const QString& text) {
    if (support::logMask() & support::LogInternalErrors)
        support::logMessage(support::LogLevel::Warning, support::LogLineFeed, "%s", qUtf8Printable(text));
}

}  // namespace xml

#include "project/project_element.h"

#include "support/huge_pages.h"

#include <array>
#include <memory_resource>
#include <typeinfo>
#include <utility>
#include <vector>

namespace project {

namespace keys {
const QString name = QStringLiteral("Name");
const QString fileName = QStringLiteral("file_name");
const QString hidden = QStringLiteral("hidden");
const QString target = QStringLiteral("target");
const QString version = QStringLiteral("version");
}  // namespace keys

const QString commonConfiguration = QStringLiteral("Common");

namespace {

using Kind = ProjectElement::Kind;

/// The tags in order of their kinds; nodes share these bytes.
const std::array<QByteArray, 5>& tags() {
    static const std::array<QByteArray, 5> all{"solution", "configuration", "project", "folder", "file"};
    return all;
}

Kind kindOf(const QString& tag) {
    for (std::size_t i = 0; i < tags().size(); ++i)
        if (tag == QLatin1StringView(tags()[i])) return static_cast<Kind>(i);
    return Kind::Unknown;
}

QByteArray tagBytes(const QString& tag) {
    const Kind kind = kindOf(tag);
    return kind == Kind::Unknown ? tag.toUtf8() : tags()[static_cast<std::size_t>(kind)];
}

/// Never destroyed: an engine may be an object of the process that lives to its very end.
std::pmr::memory_resource& nodeMemory() {
    static auto* const pool = new std::pmr::unsynchronized_pool_resource(
        std::pmr::pool_options{0, sizeof(ProjectElement)}, support::hugePageMemory());
    return *pool;
}

}  // namespace

void* ProjectElement::operator new(std::size_t size) {
    return nodeMemory().allocate(size);
}

void ProjectElement::operator delete(void* node, std::size_t size) {
    nodeMemory().deallocate(node, size);
}

ProjectElement::ProjectElement(const QString& tag) : XMLElement(tagBytes(tag)), kind(kindOf(tag)) {
    if (isSolution()) solution = std::make_unique<SolutionTables>();
}

ProjectElement::ProjectElement(const ProjectElement& other)
    : XMLElement(other.tagName()), attributes(other.attributes), kind(other.kind) {
    if (isSolution()) solution = std::make_unique<SolutionTables>();
}

ProjectElement::~ProjectElement() = default;

std::unique_ptr<ProjectElement> ProjectElement::deepCopy() const {
    auto result = std::make_unique<ProjectElement>(*this);
    std::vector<std::pair<const ProjectElement*, ProjectElement*>> pending{{this, result.get()}};
    while (!pending.empty()) {
        const auto [source, copy] = pending.back();
        pending.pop_back();
        for (ProjectElement* child = source->firstChildElement(); child;
             child = child->nextSiblingElement()) {
            auto* const childCopy = new ProjectElement(*child);
            copy->appendChild(childCopy);
            if (childCopy->isConfiguration())
                copy->configurations.insert(childCopy->elementName(), childCopy);
            if (childCopy->isFolder()) copy->folders.append(childCopy);
            copy->modified = true;
            if (child->firstChild()) pending.emplace_back(child, childCopy);
        }
    }
    return result;
}

ProjectElement* ProjectElement::parentElement() const {
    return asProjectElement(parent());
}

ProjectElement* ProjectElement::firstChildElement() const {
    xml::XMLNode* node = firstChild();
    while (node && !asProjectElement(node)) node = node->nextSibling();
    return asProjectElement(node);
}

ProjectElement* ProjectElement::nextSiblingElement() const {
    xml::XMLNode* node = nextSibling();
    while (node && !asProjectElement(node)) node = node->nextSibling();
    return asProjectElement(node);
}

ProjectElement* ProjectElement::enclosing(Kind wanted) {
    ProjectElement* node = this;
    while (node && node->kind != wanted) node = node->parentElement();
    return node;
}

ProjectElement* asProjectElement(xml::XMLNode* node) {
    if (!node) return nullptr;
    const xml::XMLNode& known = *node;
    return typeid(known) == typeid(ProjectElement) ? static_cast<ProjectElement*>(node) : nullptr;
}

}  // namespace project

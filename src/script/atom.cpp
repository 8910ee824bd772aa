#include "script/atom.h"

#include "script/exception.h"
#include "script/limits.h"

#include <QHash>

#include <array>
#include <deque>
#include <vector>

namespace script {

namespace {

constexpr std::uint32_t smallNumbers = 1024;

/// The number whose canonical decimal text `text` is.
std::uint32_t arrayIndexOf(QStringView text) {
    constexpr qsizetype longest = 10;
    if (text.isEmpty() || text.size() > longest) return ESAtom::noArrayIndex;
    if (text.front() == u'0' && text.size() > 1) return ESAtom::noArrayIndex;
    std::uint64_t number = 0;
    for (const QChar unit : text) {
        if (unit < u'0' || unit > u'9') return ESAtom::noArrayIndex;
        number = number * 10 + (unit.unicode() - u'0');
    }
    return number < ESAtom::noArrayIndex ? static_cast<std::uint32_t>(number) : ESAtom::noArrayIndex;
}

/// Open addressing over the list of atoms.
class AtomTable {
public:
    AtomTable() : places_(std::size_t{4} * smallNumbers) {
        for (std::uint32_t i = 0; i < smallNumbers; ++i) small_[i] = intern(QString::number(i));
    }

    const ESAtom* intern(QStringView text) {
        const auto hash = static_cast<std::uint32_t>(qHash(text));
        const std::size_t place = placeOf(text, hash);
        if (places_[place] != nullptr) return places_[place];
        const ESAtom* atom = add(text, hash);
        places_[place] = atom;
        if (atoms_.size() * 2 > places_.size()) grow();
        return atom;
    }

    const ESAtom* find(QStringView text) const {
        return places_[placeOf(text, static_cast<std::uint32_t>(qHash(text)))];
    }

    const ESAtom* addHidden(QStringView text) { return add(text, static_cast<std::uint32_t>(qHash(text))); }

    const ESAtom* small(std::uint32_t number) const { return small_[number]; }
    std::uint32_t count() const { return static_cast<std::uint32_t>(atoms_.size()); }

private:
    /// The place of the atom of `text`, or the free one where it would stand.
    std::size_t placeOf(QStringView text, std::uint32_t hash) const {
        std::size_t place = hash & (places_.size() - 1);
        while (places_[place] != nullptr && (places_[place]->hash != hash || places_[place]->text != text))
            place = (place + 1) & (places_.size() - 1);
        return place;
    }

    const ESAtom* add(QStringView text, std::uint32_t hash) {
        ESAtom& atom = atoms_.emplace_back();
        atom.form = ESText::Form::Atom;
        atom.length = static_cast<std::uint32_t>(text.size());
        atom.text = text.toString();
        atom.index = static_cast<std::uint32_t>(atoms_.size() - 1);
        atom.arrayIndex = arrayIndexOf(text);
        atom.hash = hash;
        return &atom;
    }

    void grow() {
        std::vector<const ESAtom*> places(places_.size() * 2);
        for (const ESAtom* atom : places_) {
            if (atom == nullptr) continue;
            std::size_t place = atom->hash & (places.size() - 1);
            while (places[place] != nullptr) place = (place + 1) & (places.size() - 1);
            places[place] = atom;
        }
        places_.swap(places);
    }

    std::deque<ESAtom> atoms_;
    std::vector<const ESAtom*> places_;
    std::array<const ESAtom*, smallNumbers> small_{};
};

AtomTable& table() {
    // Never destroyed: contexts of static lifetime may still hold atoms at the end of the process.
    static auto* const atoms = new AtomTable;
    return *atoms;
}

/// The decimal text of a number while it is looked up.
class DecimalText {
public:
    explicit DecimalText(std::uint32_t number) {
        do {
            *--first_ = static_cast<char16_t>(u'0' + number % 10);
            number /= 10;
        } while (number > 0);
    }
    QStringView view() const { return {first_, units_.end()}; }

private:
    std::array<char16_t, 10> units_{};
    char16_t* first_ = units_.end();
};

const ESAtom* known(const char16_t* text) {
    return internAtom(QStringView(text));
}

}  // namespace

const ESAtom* internAtom(QStringView text) {
    return table().intern(text);
}

const ESAtom* atomForIndex(std::uint32_t number) {
    return number < smallNumbers ? table().small(number) : internAtom(DecimalText(number).view());
}

const ESAtom* findAtomForIndex(std::uint32_t number) {
    return number < smallNumbers ? table().small(number) : table().find(DecimalText(number).view());
}

const ESAtom* makeHiddenAtom(QStringView text) {
    return table().addHidden(text);
}

std::uint32_t atomCount() {
    return table().count();
}

const KnownAtoms& knownAtoms() {
    // Braces evaluate from left to right, which is the order of interning.
    static const KnownAtoms atoms{
        known(u"length"), known(u"prototype"), known(u"null"),   known(u"true"),        known(u"false"),
        known(u"eval"),   known(u"arguments"), known(u"callee"), known(u"constructor"), known(u"index")};
    return atoms;
}

}  // namespace script

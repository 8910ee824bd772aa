#pragma once

#include "script/text.h"

#include <QStringView>

/// Atoms: one table for the process, from text to atom. It has no lock; all contexts run on one thread. Atoms
/// are never freed.
namespace script {

/// The atom of `text`, made if needed.
const ESAtom* internAtom(QStringView text);

/// The atom of the decimal text of `number`; below 1024 without a search.
const ESAtom* atomForIndex(std::uint32_t number);

/// The same if it is interned, else null.
const ESAtom* findAtomForIndex(std::uint32_t number);

/// A new atom of `text` that no text finds: a name that scripts cannot write.
const ESAtom* makeHiddenAtom(QStringView text);

/// How many atoms exist.
std::uint32_t atomCount();

/// The names that the engine itself uses, interned behind the numbers 0 to 1023 in this order.
struct KnownAtoms {
    const ESAtom* length;
    const ESAtom* prototype;
    const ESAtom* null;
    const ESAtom* trueName;
    const ESAtom* falseName;
    const ESAtom* eval;
    const ESAtom* arguments;
    const ESAtom* callee;
    const ESAtom* constructor;
    const ESAtom* index;
};

/// Interned when first asked for, by the first context.
const KnownAtoms& knownAtoms();

}  // namespace script

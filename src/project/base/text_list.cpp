#include "project/base/text_list.h"

namespace project {

QStringList escapedEntries(const QString& text) {
    QStringList entries;
    QString entry;
    const auto finish = [&] {
        if (!entry.isEmpty()) entries.append(entry);
        entry.clear();
    };
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == u'\\' && i + 1 < text.size()) {
            entry += text[++i];
        } else if (text[i] == u';') {
            finish();
        } else {
            entry += text[i];
        }
    }
    finish();
    return entries;
}

}  // namespace project

#include "freedesktop/MimeDefaults.h"

#include <QSet>

namespace moorline {

QStringList MimeDefaults::candidates(const QString &mimeType, const QStringList &declared) const
{
    const QList<MimeChoice> choices = m_choices.value(mimeType);
    QStringList ids;
    for (const MimeChoice &choice : choices)
        ids += choice.defaults;
    QSet<QString> removed;
    const auto addKept = [&](const QStringList &more) {
        for (const QString &id : more) {
            if (!removed.contains(id))
                ids.append(id);
        }
    };
    for (const MimeChoice &choice : choices) {
        addKept(choice.added);
        removed += QSet<QString>(choice.removed.begin(), choice.removed.end());
    }
    addKept(declared);
    ids.removeDuplicates();
    return ids;
}

} // namespace moorline

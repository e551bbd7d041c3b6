#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QHash>
#include <QVariantMap>

namespace moorline::test {

/// A media player that does as the test says, in a process of its own as far as the bus can tell.
class MprisDouble final : public QDBusVirtualObject {
    Q_OBJECT
public:
    /// Takes the name that follows "org.mpris.MediaPlayer2.", and plays a track called "A song".
    MprisDouble(const QByteArray &busAddress, const QString &name);
    ~MprisDouble() override;

    /// A call that it answers and does not count: Qt itself answers a ping, on another thread.
    static inline const QString flush = QStringLiteral("Flush");

    [[nodiscard]] static QString fullName(const QString &name);
    [[nodiscard]] QString owner() const;
    [[nodiscard]] bool takeName(const QString &name) const;
    /// Ends without a word, as a program that is killed.
    void quit();

    /// What it answers.
    QVariantMap root;
    QVariantMap player;
    QVariant position = qint64(0);
    void setTrack(const QString &key, const QVariant &value);
    void setStatus(const QString &status);
    /// Says that this changed: what it has for it, or only that it did.
    void tellChange(const QString &property, bool isInvalidated = false);
    void tellSeek(qint64 microseconds);
    void tell(const QString &interface, const QString &member, const QVariantList &arguments) const;
    /// Sets the status and says so.
    void start();
    void pause();

    /// What it does not answer from now on, until release(), as it stands in calls().
    void hold(const QString &call);
    /// Answers what was held back.
    void release(const QString &call);
    /// What it answers with that error from now on.
    void fail(const QString &call, const QString &error);
    /// What it answers with that from now on.
    void answerWith(const QString &call, const QVariantList &values);

    /// What was called, in order: "Next", "GetAll Player", "GetAll root", "Get Position".
    [[nodiscard]] const QStringList &calls() const { return m_calls; }
    [[nodiscard]] qsizetype count(const QString &call) const { return m_calls.count(call); }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;
    QString introspect(const QString &path) const override;

private:
    [[nodiscard]] QDBusConnection connection() const { return QDBusConnection(m_connectionName); }
    [[nodiscard]] QVariantList usualAnswer(const QString &call) const;

    QString m_connectionName;
    QVariantMap m_track;
    QStringList m_calls;
    QHash<QString, QString> m_errors;
    QHash<QString, QVariantList> m_answers;
    QHash<QString, QList<QDBusMessage>> m_held;
};

} // namespace moorline::test

#pragma once

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <optional>

namespace moorline::test {

/// When a fix was made, as GeoClue tells it.
struct GeoClueTimestamp {
    quint64 seconds = 0;
    quint64 microseconds = 0;
};

QDBusArgument &operator<<(QDBusArgument &argument, const GeoClueTimestamp &timestamp);
const QDBusArgument &operator>>(const QDBusArgument &argument, GeoClueTimestamp &timestamp);

/// A GeoClue that does as the test says, in a process of its own as far as the bus can tell.
class GeoClueDouble final : public QDBusVirtualObject {
    Q_OBJECT
public:
    GeoClueDouble();
    ~GeoClueDouble() override;

    /// Takes the service's name on the bus, as a new process each time.
    void start();
    /// Leaves the bus. What it was not told yet is refused; what it holds is never answered.
    void stop();

    /// The method fails with that error from now on.
    void fail(const QString &method, const QString &errorName);
    /// The method gives that answer from now on.
    void answerWith(const QString &method, const QVariantList &answer);
    /// The method gives no answer from now on, until release().
    void hold(const QString &method);
    /// Answers as usual what was held back.
    void release(const QString &method);

    /// The properties of the location objects, with what else a test puts there.
    QVariantMap location;
    void setLocation(double latitude, double longitude, GeoClueTimestamp timestamp);
    /// Says that the machine is where `location` says.
    void tellLocation(const QString &path = QStringLiteral("/org/freedesktop/GeoClue2/Location/1"));
    /// Says what a property of the manager holds now.
    void tellProperty(const QString &name, const QVariant &value);
    /// Says it as a program does that is not GeoClue.
    void tellLocationAsStranger();

    /// The methods that were called, in order, "Set" with the name of the property.
    [[nodiscard]] const QStringList &calls() const { return m_calls; }
    [[nodiscard]] qsizetype count(const QString &method) const { return m_calls.count(method); }
    /// What was set on the client.
    [[nodiscard]] const QVariantMap &clientProperties() const { return m_clientProperties; }
    /// Whether a client is started at the moment.
    [[nodiscard]] bool isTracking() const { return m_isTracking; }
    [[nodiscard]] bool hasClient() const { return m_hasClient; }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;
    QString introspect(const QString &path) const override;

private:
    void record(const QDBusMessage &message);
    [[nodiscard]] QVariantList usualAnswer(const QDBusMessage &message);
    [[nodiscard]] QDBusMessage locationSignal(const QString &path) const;

    QString m_connectionName;
    QHash<QString, QString> m_errors;
    QHash<QString, QVariantList> m_answers;
    QHash<QString, QList<QDBusMessage>> m_held;
    QStringList m_calls;
    QVariantMap m_clientProperties;
    bool m_isTracking = false;
    bool m_hasClient = false;
};

} // namespace moorline::test

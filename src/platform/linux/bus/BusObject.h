#pragma once

#include <QDBusVirtualObject>
#include <QVariantMap>
#include <functional>
#include <variant>

namespace moorline {

class Bus;

/// What a caller gets in place of an answer: the D-Bus name of the error, and a text for whoever reads logs.
struct BusError {
    QString name;
    QString text;

    [[nodiscard]] static BusError invalidArguments(const QString &text);
};

/// A method that others may call.
struct BusMethod {
    using Reply = std::variant<QVariantList, BusError>;

    QString name;
    /// The signature of each argument.
    QStringList takes;
    QStringList gives;
    /// Called with as many arguments, and of those types.
    std::function<Reply(const QVariantList &arguments)> call;
};

/// What an object offers under one name.
struct BusInterface {
    QString name;
    QList<BusMethod> methods;
    /// All of them, as they are now. They can only be read.
    std::function<QVariantMap()> properties;
};

/// An object that other programs find on a bus, for as long as it lives and the bus is there, and again on a bus that
/// comes again. Whoever calls what it does not have, or not as it takes it, is told so in D-Bus's own words.
class BusObject final : public QDBusVirtualObject {
    Q_OBJECT
public:
    /// `bus` outlives it.
    BusObject(Bus &bus, const QString &path, QList<BusInterface> interfaces);
    ~BusObject() override;

    /// To everybody. Lost while there is no bus.
    void emitSignal(const QString &interface, const QString &member, const QVariantList &arguments) const;

    [[nodiscard]] QString introspect(const QString &path) const override;
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;

private:
    void enter();
    [[nodiscard]] const BusInterface *find(const QString &interface) const;
    [[nodiscard]] const BusMethod *find(const QString &interface, const QString &method) const;
    [[nodiscard]] BusMethod::Reply answer(const QDBusMessage &message) const;
    [[nodiscard]] BusMethod::Reply property(const QString &interface, const QString &name) const;
    [[nodiscard]] BusMethod::Reply properties(const QString &interface) const;

    Bus &m_bus;
    QString m_path;
    QList<BusInterface> m_interfaces;
};

} // namespace moorline

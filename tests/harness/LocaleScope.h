#pragma once

#include <QLocale>

namespace moorline::test {

/// Makes a locale the user's own for as long as it lives.
class LocaleScope final {
public:
    explicit LocaleScope(const QString &name) { QLocale::setDefault(QLocale(name)); }
    ~LocaleScope() { QLocale::setDefault(m_previous); }
    Q_DISABLE_COPY_MOVE(LocaleScope)

private:
    QLocale m_previous;
};

} // namespace moorline::test

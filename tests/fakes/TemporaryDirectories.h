#pragma once

#include "platform/Directories.h"

#include <QTemporaryDir>

namespace moorline::test {

/// A home that is gone after the test.
class TemporaryDirectories final : public Directories {
public:
    [[nodiscard]] QString applicationSupport() const override { return m_root.path(); }
    [[nodiscard]] QString downloads() const override { return downloadsPath; }
    [[nodiscard]] QString trash() const override { return trashPath; }

    /// Not there.
    QString downloadsPath = QStringLiteral("/home/me/Downloads");
    QString trashPath = QStringLiteral("/home/me/.Trash");

private:
    QTemporaryDir m_root;
};

/// Lets the folder of application state be any path.
class GivenDirectories final : public Directories {
public:
    explicit GivenDirectories(QString path)
        : m_path(std::move(path))
    {
    }
    [[nodiscard]] QString applicationSupport() const override { return m_path; }
    [[nodiscard]] QString downloads() const override { return {}; }
    [[nodiscard]] QString trash() const override { return {}; }

private:
    QString m_path;
};

} // namespace moorline::test

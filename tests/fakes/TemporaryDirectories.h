#pragma once

#include "platform/Directories.h"

#include <QTemporaryDir>

namespace moorline::test {

/// A home that is gone after the test.
class TemporaryDirectories final : public Directories {
public:
    [[nodiscard]] QString applicationSupport() const override { return m_root.path(); }

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

private:
    QString m_path;
};

} // namespace moorline::test

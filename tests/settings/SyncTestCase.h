#pragma once

#include "fakes/FakeClock.h"
#include "fakes/FakeFiles.h"
#include "harness/TestCase.h"
#include "settings/SettingsCoding.h"
#include "settings/SettingsSync.h"

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>

namespace moorline::test {

/// The base of tests of settings that have a file, in which anyone may write.
class SyncTestCase : public TestCase {
    Q_OBJECT
protected Q_SLOTS:
    void init()
    {
        TestCase::init();
        m_root = std::make_unique<QTemporaryDir>();
        m_path = m_root->filePath(QStringLiteral("settings.json"));
        m_damagedPath = m_path + QStringLiteral(".damaged");
        m_clock = std::make_unique<FakeClock>();
    }

protected:
    [[nodiscard]] static QByteArray contents(const QString &path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    /// The defaults as they are after the first start.
    [[nodiscard]] static Settings introducedDefaults()
    {
        Settings settings;
        settings.pinnedItemsIntroduced = true;
        return settings;
    }

    void begin()
    {
        m_sync.reset();
        m_sync = std::make_unique<SettingsSync>(m_path, *m_clock, m_fileWatch);
        m_changes = std::make_unique<QSignalSpy>(m_sync.get(), &SettingsSync::didChange);
    }

    void tell() { m_fileWatch.tell(m_path); }
    void look()
    {
        tell();
        m_clock->advance(std::chrono::milliseconds(75));
    }

    template <typename Edit>
    static Settings changed(Edit edit)
    {
        Settings settings = introducedDefaults();
        edit(settings);
        return settings;
    }

    /// Another program's change of the defaults.
    template <typename Edit>
    Settings writeTheirs(Edit edit)
    {
        const Settings settings = changed(edit);
        write(encodeSettings(settings));
        return settings;
    }

    void write(const QByteArray &bytes) const
    {
        QFile file(m_path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    void setModified(const QDateTime &time) const
    {
        QFile file(m_path);
        QVERIFY(file.open(QIODevice::ReadWrite));
        QVERIFY(file.setFileTime(time, QFileDevice::FileModificationTime));
    }

    [[nodiscard]] std::optional<Settings> onDisk() const { return decodeSettings(contents(m_path)); }

    std::unique_ptr<QTemporaryDir> m_root;
    QString m_path;
    QString m_damagedPath;
    std::unique_ptr<FakeClock> m_clock;
    FakeFileWatch m_fileWatch;
    std::unique_ptr<SettingsSync> m_sync;
    std::unique_ptr<QSignalSpy> m_changes;
};

} // namespace moorline::test

#pragma once

#include "chrome/BarPopup.h"
#include "platform/Clock.h"

namespace moorline {

/// A short text above the bar that tells about the widget below it. It takes no input and goes by itself after a while.
class HelpTag final : public BarPopup {
    Q_OBJECT
public:
    static constexpr std::chrono::seconds longestShow{10};

    HelpTag(PopupWindows &windows, Clock &clock);

    void setText(const QString &text);
    [[nodiscard]] QString text() const { return m_lines.join(u'\n'); }
    [[nodiscard]] QSizeF naturalSize() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void restartTimer();

    Clock &m_clock;
    QStringList m_lines;
    std::unique_ptr<Clock::Timer> m_timer;
};

} // namespace moorline

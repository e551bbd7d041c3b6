#pragma once

#include "chrome/BarWidget.h"

#include <QApplication>
#include <QGraphicsScene>
#include <QTest>

namespace moorline::test {

/// Has all texts in another family as long as it lives.
class FontScope final {
public:
    FontScope()
    {
        QFont font = m_before;
        font.setFamily(QStringLiteral("Monospace"));
        QApplication::setFont(font);
    }
    ~FontScope() { QApplication::setFont(m_before); }
    Q_DISABLE_COPY_MOVE(FontScope)

private:
    QFont m_before = QApplication::font();
};

/// Whether a widget that is in the bar when the font changes takes the size that one has which is made afterwards.
template <typename Make>
void verifyFollowsTheFont(Make make)
{
    QGraphicsScene scene;
    const auto widget = make();
    scene.addItem(widget.get());
    // Once the scene has taken note of it.
    QCoreApplication::processEvents();
    const QSizeF before = widget->preferredSize();
    int changes = 0;
    QObject::connect(widget.get(), &BarWidget::naturalSizeChanged, &scene, [&changes] { ++changes; });
    {
        const FontScope another;
        QVERIFY(widget->preferredSize() != before);
        QCOMPARE(widget->preferredSize(), make()->preferredSize());
        QVERIFY(changes > 0);
    }
    QCOMPARE(widget->preferredSize(), before);
    scene.removeItem(widget.get());
}

} // namespace moorline::test

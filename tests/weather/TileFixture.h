#pragma once

#include "RepaintCounter.h"
#include "WeatherFixture.h"
#include "fakes/FakeSystem.h"
#include "theme/Symbols.h"
#include "weather/WeatherTile.h"

#include <QGraphicsView>
#include <QMouseEvent>
#include <QTest>

namespace moorline::test {

/// The weather of a chosen city, and what its widgets draw with.
struct TileFixture : WeatherFixture {
    TileFixture()
    {
        chooseCity();
        service->start();
    }

    WeatherTile::Context context()
    {
        return {*service, symbols, [this] { ++timesOpened; }};
    }

    void refresh(const QJsonObject &reply)
    {
        [[maybe_unused]] const auto unwatched = service->refresh();
        answerForecast(reply);
    }

    /// What was drawn of a symbol, the last time.
    [[nodiscard]] SymbolRequest lastRequest(const QString &name) const
    {
        for (auto request = images.requests.rbegin(); request != images.requests.rend(); ++request) {
            if (request->name == name)
                return *request;
        }
        return {};
    }

    FakeSymbolCatalogue images;
    Symbols symbols{images};
    int timesOpened = 0;
};

/// Lets the widget paint where nobody looks.
inline void paint(QGraphicsWidget &widget, qreal scale = 1)
{
    QVERIFY(!painted(widget, scale).isNull());
}

/// The picture that a function draws at this scale, on nothing: what painted() is compared with.
template <typename Draw>
[[nodiscard]] QImage drawn(const QSizeF &size, qreal scale, Draw draw)
{
    QImage image((size * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    draw(painter);
    return image;
}

/// The rows of a case that is about every scale.
inline void addScales()
{
    QTest::addColumn<qreal>("scale");
    QTest::newRow("1") << 1.0;
    QTest::newRow("2") << 2.0;
}

/// A widget in a view of its own, to be clicked at.
class Stage final {
public:
    explicit Stage(WeatherTile &widget)
        : m_widget(widget)
        , m_view(&m_scene)
    {
        m_scene.addItem(&widget);
        m_scene.setSceneRect(0, 0, 300, 100);
        m_view.setFrameStyle(QFrame::NoFrame);
        m_view.setAlignment(Qt::AlignLeft | Qt::AlignTop);
        m_view.resize(300, 100);
        m_view.show();
    }
    ~Stage() { m_scene.removeItem(&m_widget); }

    void press(const QPoint &place, Qt::MouseButton button = Qt::LeftButton)
    {
        send(QEvent::MouseButtonPress, place, button, button);
    }
    void release(const QPoint &place, Qt::MouseButton button = Qt::LeftButton)
    {
        send(QEvent::MouseButtonRelease, place, button, Qt::NoButton);
    }
    void doubleClick(const QPoint &place)
    {
        press(place);
        release(place);
        send(QEvent::MouseButtonDblClick, place, Qt::LeftButton, Qt::LeftButton);
        release(place);
    }

private:
    void send(QEvent::Type type, const QPoint &place, Qt::MouseButton button, Qt::MouseButtons pressed)
    {
        QMouseEvent event(type, place, m_view.viewport()->mapToGlobal(place), button, pressed, Qt::NoModifier);
        QCoreApplication::sendEvent(m_view.viewport(), &event);
    }

    WeatherTile &m_widget;
    QGraphicsScene m_scene;
    QGraphicsView m_view;
};

} // namespace moorline::test

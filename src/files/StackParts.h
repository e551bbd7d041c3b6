#pragma once

#include <QAbstractButton>
#include <QKeyEvent>
#include <QScrollArea>

QT_BEGIN_NAMESPACE
class QVBoxLayout;
QT_END_NAMESPACE

namespace moorline {

class Symbols;

// What the Downloads stack is made of beside its rows.

/// A few lines of faint text.
class StackMessage final : public QWidget {
    Q_OBJECT
public:
    /// `size` is the text's, in points.
    StackMessage(const QString &text, qreal size, QWidget *parent);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QStringList m_lines;
    qreal m_size;
};

/// Rows below each other, as high as they are, up to a height from which on they scroll.
class StackList final : public QScrollArea {
    Q_OBJECT
public:
    explicit StackList(QWidget *parent);

    void append(QWidget *row);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    /// The arrow keys are for the rows.
    void keyPressEvent(QKeyEvent *event) override { event->ignore(); }

private:
    QVBoxLayout *m_rows;
};

/// The line below it all.
class StackLine final : public QWidget {
    Q_OBJECT
public:
    using QWidget::QWidget;

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
};

/// A symbol and a text that can be pressed.
class StackButton final : public QAbstractButton {
    Q_OBJECT
public:
    StackButton(const Symbols &symbols, QString symbol, const QString &text, QWidget *parent);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    void enterEvent(QEnterEvent *event) override;
    void leaveEvent(QEvent *event) override;
    /// The list reads the keyboard for everything in it.
    void keyPressEvent(QKeyEvent *event) override { event->ignore(); }
    void keyReleaseEvent(QKeyEvent *event) override { event->ignore(); }

private:
    const Symbols &m_symbols;
    QString m_symbol;
};

} // namespace moorline

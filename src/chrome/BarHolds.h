#pragma once

#include <QObject>
#include <QPointer>
#include <utility>

namespace moorline {

/// Keeps the bar where it is while someone needs it there: while a menu or a popover is open, while something is
/// dragged.
class BarHolds final : public QObject {
    Q_OBJECT
public:
    /// The bar is held as long as one token lives. A default-constructed or moved-from token holds nothing; one that
    /// outlives its BarHolds does no harm.
    class Token {
    public:
        Token() = default;
        Token(Token &&other) noexcept
            : m_holds(std::exchange(other.m_holds, nullptr))
        {
        }
        Token &operator=(Token &&other) noexcept
        {
            std::swap(m_holds, other.m_holds);
            return *this;
        }
        ~Token();

    private:
        friend class BarHolds;
        explicit Token(BarHolds &holds)
            : m_holds(&holds)
        {
        }

        QPointer<BarHolds> m_holds;
    };

    using QObject::QObject;

    [[nodiscard]] Token take();
    [[nodiscard]] bool isHeld() const { return m_tokens > 0; }

Q_SIGNALS:
    /// The first token was taken, or the last one was given back.
    void heldChanged();

private:
    void giveBack();

    int m_tokens = 0;
};

} // namespace moorline

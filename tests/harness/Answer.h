#pragma once

#include <QCoroTask>
#include <memory>
#include <optional>

namespace moorline::test {

/// What a task answers, as soon as it does. The task goes on without it.
template <typename Value>
class Answer {
public:
    explicit Answer(QCoro::Task<Value> task) { keep(std::move(task), m_value); }

    [[nodiscard]] bool isThere() const { return m_value->has_value(); }
    [[nodiscard]] const Value &value() const { return m_value->value(); }

private:
    static QCoro::Task<> keep(QCoro::Task<Value> task, std::shared_ptr<std::optional<Value>> value)
    {
        value->emplace(co_await std::move(task));
    }

    std::shared_ptr<std::optional<Value>> m_value = std::make_shared<std::optional<Value>>();
};

} // namespace moorline::test

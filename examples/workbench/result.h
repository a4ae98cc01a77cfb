// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

#include <optional>
#include <utility>

/// Why a step gave nothing, as the end of a line that begins with the file's name.
struct Failure
{
    QString reason;
};

/// What a step gives: its value, or the reason why there is none.
template<typename T>
class Result
{
public:
    Result(T value) : m_value(std::move(value)) {}
    Result(Failure failure) : m_reason(std::move(failure.reason)) {}

    explicit operator bool() const { return m_value.has_value(); }
    T& operator*() { return *m_value; }
    const T& operator*() const { return *m_value; }
    T* operator->() { return &*m_value; }
    const T* operator->() const { return &*m_value; }
    Failure failure() const { return {m_reason}; }

private:
    std::optional<T> m_value;
    QString m_reason;
};

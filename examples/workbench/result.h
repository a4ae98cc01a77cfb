// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

#include <optional>
#include <utility>

/// What kind of failure it is, for programs that read the lines of JSON.
enum class FailureCode {
    ByStep, ///< the one that belongs to the step that failed, see codeText()
    Missing,
    NotAFile,
    Empty,
    NotAPhotograph,
    Refused, ///< a name, a folder or an output that cannot be taken
    TooLarge,
    Format, ///< the format or its encoder cannot do what is wanted
    Memory,
    Process ///< the worker process ended, or none could be started
};

/// Why a step gave nothing, as the end of a line that begins with the file's name.
struct Failure
{
    QString reason;
    FailureCode code = FailureCode::ByStep;
};

/// What a step gives: its value, or the reason why there is none.
template<typename T>
class Result
{
public:
    Result(T value) : m_value(std::move(value)) {}
    Result(Failure failure) : m_failure(std::move(failure)) {}

    explicit operator bool() const { return m_value.has_value(); }
    T& operator*() { return *m_value; }
    const T& operator*() const { return *m_value; }
    T* operator->() { return &*m_value; }
    const T* operator->() const { return &*m_value; }
    const Failure& failure() const { return m_failure; }

private:
    std::optional<T> m_value;
    Failure m_failure;
};

// SPDX-FileCopyrightText: The vantix authors
// SPDX-License-Identifier: MIT

#ifndef TIMESTEPS_H
#define TIMESTEPS_H

#include <QtGlobal>

#include <array>

inline constexpr qint64 secondTime = 1000; //!< milliseconds, as the others
inline constexpr qint64 minuteTime = 60 * secondTime;
inline constexpr qint64 hourTime = 60 * minuteTime;
inline constexpr qint64 dayTime = 24 * hourTime;

//! Steps of clocks that people find round, up to a day. Each is so many times the one before.
inline constexpr std::array timeSteps {qint64(1),       qint64(5),       qint64(10), qint64(50),
                                       qint64(100),     qint64(500),     secondTime, 5 * secondTime,
                                       10 * secondTime, 30 * secondTime, minuteTime, 5 * minuteTime,
                                       10 * minuteTime, 30 * minuteTime, hourTime,   3 * hourTime,
                                       6 * hourTime,    12 * hourTime,   dayTime};

#endif // TIMESTEPS_H

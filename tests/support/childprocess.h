// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

#include <functional>

/// Runs \a work in a process of its own, a copy of this one: it may crash there, be killed, give up
/// privileges or set limits. It ends with \a work, without any clean-up, or is killed after a
/// minute.
///
/// \return what \a work returned, or that a check failed in it, or how the process ended; empty if
/// all
///         is well.
QString inChild(const std::function<QString()> &work);

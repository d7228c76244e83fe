// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

class ModalDriver;
class QWidget;

/// What a modified view of \a file asks when it is to be closed.
QString closeQuestion(const QString &file);

/// Expects the box in which \a view refuses to save, with \a report as its details, and takes it
/// away by Escape.
void expectFaults(ModalDriver &driver, const QWidget *view, const QString &report);

/// Expects the box that tells of a failed write of \a file.
void expectFailedWrite(ModalDriver &driver, const QString &file);

/// A name of a file that can be read but not written anew.
QString unwritableName();

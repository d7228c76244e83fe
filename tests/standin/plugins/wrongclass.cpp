// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "news.h"

/// Names the right interface, but has no such object.
class WrongClassPlugin : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "MOLK.MolkInserterPlugin/1.0")

public:
    ~WrongClassPlugin() override { tell("deleted wrong class"); }
};

#include "wrongclass.moc"

// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "designchanges.h"

using Standin::Event;

QString filesText()
{
    return "Design files changed. Do you want to reload?";
}

QString topText()
{
    return "Top module changed. Do you want to reload?";
}

Event filesChanged()
{
    return Event("TE.Option.Change", {{"option", "IncludePath"}});
}

Event topChanged()
{
    return Event("TE.Option.Change", {{"option", "TopModule"}});
}

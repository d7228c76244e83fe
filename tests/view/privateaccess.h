// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

/// Hands a private member to a test. An explicit instantiation may name what is private, so
///
///     struct Paths { using Type = QStringList (MolkView::*)(); friend Type member(Paths); };
///     template struct PrivateAccess<Paths, &MolkView::includePaths>;
///
/// makes `(view.*member(Paths()))()` call it, and the class needs no friend.
template<typename Tag, typename Tag::Type pointer>
struct PrivateAccess
{
    friend typename Tag::Type member(Tag) { return pointer; }
};

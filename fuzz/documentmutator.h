// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include <QStringList>

#include <cstddef>
#include <cstdint>

/// What the documents of a format consist of.
struct DocumentVocabulary
{
    QStringList names;  ///< Of elements and attributes, and some that aren't known.
    QStringList values; ///< Of attributes and texts: good ones, and ones that are just beyond it.
};

/// Changes the document in \a data in its structure: elements and attributes are repeated, dropped,
/// moved and exchanged, texts and values replaced by others. The outcome is well formed, so that it
/// comes further into a reader than changed bytes do. What isn't well formed, and every second
/// document under libFuzzer, is changed byte by byte instead.
///
/// Arguments and result but for the last are those of LLVMFuzzerCustomMutator(). \a seed decides
/// what is changed; equal arguments give an equal result.
std::size_t mutateDocument(std::uint8_t *data, std::size_t size, std::size_t most, unsigned seed,
                           const DocumentVocabulary &vocabulary);

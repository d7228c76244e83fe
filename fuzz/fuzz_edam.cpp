// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

// Bytes in: what is accepted as YAML must be written and read back equal, and what is accepted as a
// project must stay one when it is changed.

#include "project/edamfile.h"

#include <cstdint>
#include <cstdlib>

using namespace Standin;

// What has once been written is written so again.
static void checkRoundTrip(const YamlNode &root)
{
    const QByteArray written = writeYaml(root);
    if (written.isNull())
        return;
    YamlNode back;
    YamlError error;
    if (!readYaml(written, &back, &error) || !isFaithful(root, back) || writeYaml(back) != written)
        std::abort();
}

static void checkChanges(YamlNode root, int files)
{
    if (!appendFiles(&root, {"added: #1.sv"}))
        return;
    if (files > 0 && !removeFiles(&root, {0}))
        std::abort();
    if (!setTops(&root, {"top"}) || !setToolOption(&root, "IncludePath", QStringList("inc"))
        || !moveEdam(&root, "/from", "/from/to", false))
        std::abort();

    EdamContents contents;
    EdamReport report;
    if (!readEdam(root, "/from/to", &contents, &report))
        std::abort();
    if (contents.files.size() != (files > 0 ? files : 1) || contents.tops != QStringList("top")
        || contents.files.last().path != "/from/added: #1.sv")
        std::abort();
    checkRoundTrip(root);
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), int(size));
    YamlNode root;
    YamlError error;
    if (!readYaml(bytes, &root, &error)) {
        if (error.text.isEmpty())
            std::abort();
        return 0;
    }
    checkRoundTrip(root);

    EdamContents contents;
    EdamReport report;
    const bool accepted = readEdam(root, "/from", &contents, &report);
    if (accepted != report.errors.isEmpty())
        std::abort();
    if (accepted) {
        designInfo(contents, "/from");
        checkChanges(root, contents.files.size());
    }
    return 0;
}

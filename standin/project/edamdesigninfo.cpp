// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "designinfo.h"
#include "project/edamcontents.h"

#include <QDir>
#include <QSet>

namespace Standin {

// What the user added comes first, so that it can stand in for what the files bring along.
static QStringList includePath(const EdamContents &contents, const QString &directory)
{
    QStringList found;
    const QStringList extra = contents.options.value("IncludePath").toStringList();
    for (const QString &path : extra)
        found.append(QDir::cleanPath(QDir(directory).absoluteFilePath(path)));
    for (const EdamFile &file : contents.files) {
        if (file.isInclude && file.enabled)
            found.append(file.includeDirectory);
    }
    found.removeDuplicates();
    return found;
}

static QVariantMap fileInfo(const EdamFile &file)
{
    QVariantMap info{{DesignInfo::Path, file.path}, {DesignInfo::Type, int(file.kind)}};
    if (!file.standard.isEmpty())
        info.insert(DesignInfo::Standard, file.standard);
    if (!file.library.isEmpty())
        info.insert(DesignInfo::Library, file.library);
    if (!file.defines.isEmpty())
        info.insert(DesignInfo::Defines, file.defines);
    return info;
}

QMap<QString, QVariant> designInfo(const EdamContents &contents, const QString &directory)
{
    QVariantList files;
    for (const EdamFile &file : contents.files) {
        if (file.enabled && !file.isInclude && file.kind != OtherKind)
            files.append(fileInfo(file));
    }

    QMap<QString, QVariant> info{{DesignInfo::Files, files}};
    if (contents.tops.size() == 1)
        info.insert(DesignInfo::Top, contents.tops.constFirst());
    const QStringList directories = includePath(contents, directory);
    if (!directories.isEmpty())
        info.insert(DesignInfo::IncludePath, directories);
    if (!contents.defines.isEmpty())
        info.insert(DesignInfo::Defines, contents.defines);
    if (!contents.parameters.isEmpty())
        info.insert(DesignInfo::Parameters, contents.parameters);
    if (!contents.generics.isEmpty())
        info.insert(DesignInfo::Generics, contents.generics);
    const QString standard = contents.options.value("Verilog_Standard").toString();
    if (!standard.isEmpty())
        info.insert(DesignInfo::VerilogStandard, standard);
    return info;
}

} // namespace Standin

// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#pragma once

#include "hostglobal.h"

#include "core/iproject.h"
#include "te/designfile.h"

#include <QStringList>
#include <QVariant>

#include <memory>

namespace Standin {

/// Kinds of project files, as TE::DesignFile::type has them.
enum FileKind { OtherKind = 1, VerilogKind = 2, SystemVerilogKind = 3, VhdlKind = 4 };

/// A project of the host: a list of files, a top module and options.
///
/// It is read from an EDAM file, the YAML that FuseSoC and edalize write, or made from a list of
/// files. Whatever else an EDAM file holds is kept when it is written, in its place; of its
/// comments those at the head of the file are. Hooks are kept and never run.
///
/// What EDAM has no key for is stored below `tool_options: workbench:`, the project options under
/// their own names and the files that are switched off as a list under `disabled_files`.
///
/// Each change is written to the file at once, then the event that tells of it is sent; if it can't
/// be written, nothing changes and no event is sent. A change of several files is one write, so it
/// happens to all of them or to none. A project without a file of its own is changed in memory
/// alone. An operation that returns false leaves a sentence for the user in its \a error.
class HOST_EXPORT EdamProject : public Core::IProject
{
public:
    ~EdamProject() override;

    Q_DISABLE_COPY_MOVE(EdamProject)

    /// Reads the EDAM file \a path.
    ///
    /// \param errors receives, if it can't be read, all that is wrong with it, a line each:
    ///        "soc.eda.yml:12: files[3].name: is missing" names file, line and key.
    /// \param warnings receives, as lines of the same form, what is odd but can be used. May be
    /// null. \return null if the file can't be used.
    static std::unique_ptr<EdamProject> open(const QString &path, QStringList *errors,
                                             QStringList *warnings = nullptr);

    /// Makes a project of \a files, kinds by their suffixes, in the current directory. It has no
    /// file of its own until saveAs().
    /// \param top the top module; empty if it isn't set.
    static std::unique_ptr<EdamProject> adHoc(const QStringList &files, const QString &top);

    /// The project's name.
    QString name() const;

    /// Absolute path of the EDAM file; empty if the project has none.
    QString path() const;

    /// The directory that relative paths in the project are relative to, absolute.
    QString directory() const;

    /// Whether a project without a file of its own has been changed since it was made.
    bool hasUnsavedChanges() const;

    /// The files in order. The keys of TE::DesignFile::data, each only where it says something:
    /// "name" (the path as the project file has it), "file_type", "is_include_file" (true),
    /// "include_path" (absolute), "logical_name", "define" (map).
    QList<TE::DesignFile> files() const;

    /// The record of the file \a path; a default record if it isn't in the project. Relative paths
    /// are relative to directory().
    TE::DesignFile file(const QString &path) const;

    /// The top module; empty if none is set, or several are.
    QString top() const;

    /// Uses \a top as the top module until setTop() sets one, without storing it. No event follows.
    void overrideTop(const QString &top);

    /// The project option \a name; an invalid variant if it isn't set. "IncludePath" is a string
    /// list, every other a string. "TopModule" is top().
    QVariant option(const QString &name) const;

    /// The design information map, with the keys of designinfo.h.
    QMap<QString, QVariant> designInfo() const;

    /// Watches the RTL files of the project from here on, as far as the event loop runs:
    /// "TE.File.Modified" is sent for each change of a file's content, and when a file goes or
    /// comes back.
    void watchSources();

    /// \copydoc Core::IProject::addFile()
    /// The kind is that of the suffix. "TE.File.Add" follows.
    bool addFile(const QString &path) override;

    /// Adds the files of \a paths that aren't in the project yet, with one write; "TE.File.Add"
    /// follows for each.
    bool addFiles(const QStringList &paths, QString *error);

    /// Takes the files of \a paths out of the project. "TE.File.Remove" follows for each. The files
    /// themselves stay.
    bool removeFiles(const QStringList &paths, QString *error);

    /// Switches the files on or off. "TE.File.Change.Enable" follows for each that wasn't so
    /// already.
    bool setFilesEnabled(const QStringList &paths, bool on, QString *error);

    /// Changes the files' kind. "TE.File.Change.Type" follows for each that wasn't of it already.
    bool setFilesKind(const QStringList &paths, FileKind kind, QString *error);

    /// Makes the files include files, which aren't compiled by themselves, or source files again.
    /// "TE.File.Change.Type" follows for each that wasn't so already, with the same kind before and
    /// after.
    bool setIncludeFiles(const QStringList &paths, bool on, QString *error);

    enum Place { Before, After };

    /// Moves the files of \a paths, which keep their order, directly before or after the file
    /// \a anchor, which counts for the order of compilation. There is no event of its own for
    /// that: "TE.File.Modified" follows for each of \a paths if the order has changed. Nothing
    /// happens if \a anchor is one of them.
    bool moveFiles(const QStringList &paths, const QString &anchor, Place place, QString *error);

    /// Sets the top module; empty unsets it. "TE.Option.Change" for "TopModule" follows unless it
    /// is so already.
    bool setTop(const QString &top, QString *error);

    /// Sets the option \a name, a string or a string list; an invalid \a value unsets it.
    /// "TE.Option.Change" follows unless it is so already, for the option "Device"
    /// "TE.Device.Change".
    bool setOption(const QString &name, const QVariant &value, QString *error);

    /// Sets several options with one write, which then follow one another in order of their names.
    bool setOptions(const QVariantMap &values, QString *error);

    /// Writes the project to the EDAM file \a path, which is its own from then on. Relative paths
    /// in it are rewritten if the directory changes.
    bool saveAs(const QString &path, QString *error);

private:
    struct Private;
    explicit EdamProject(std::unique_ptr<Private> data);

    std::unique_ptr<Private> d;
};

} // namespace Standin

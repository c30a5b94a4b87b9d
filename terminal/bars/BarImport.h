#pragma once

#include "terminal/data/BarSheet.h"
#include "terminal/data/SecurityList.h"

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>

#include <functional>
#include <map>
#include <optional>
#include <utility>
#include <vector>

namespace Terminal {

/// How foreign bars become those of a data folder.
struct BarImportOptions
{
    BarHints hints;
    QString name;                  ///< of the security; empty: as the file or the folder has it
    QHash<QString, QString> names; ///< by code, of securities that neither file nor folder name
    bool replacesAll = false;      ///< else bars that are in the folder and not in the file stay
};

/// A file that an import writes into its folder.
struct PlannedFile
{
    QString name; ///< inside of the folder: "daily/600519.csv"
    QByteArray content;
    QString change; ///< for the user: "new", "20 new days, 3 replaced"
};

/// What an import of one file would do.
struct BarImportPlan
{
    BarSheet sheet;
    Security security;
    std::vector<PlannedFile> files;
    QStringList remarks; ///< for the user, about the file and about what is in the folder already
};

/// Foreign bar files on their way into a data folder, which need not be there yet.
///
///     BarImport import(folder);
///     for each file: import.plan(file, options) reads it and writes nothing
///     import.write()
class BarImport
{
public:
    /// Whether to go on, when so many files of all are done.
    using GoesOn = std::function<bool(int done, int all)>;

    /// Without a folder, an empty text, nothing is there and nothing can be written.
    explicit BarImport(QString folder) : m_folder(std::move(folder)) {}

    /// Reads one file and compares it with the folder, as the files before would leave it. A failure says
    /// what to do instead, and plans nothing.
    Loaded<BarImportPlan> plan(const QString &file, const BarImportOptions &options);

    /// Writes what was planned, and the securities into the list of the folder. Each file is there as a whole
    /// or as it was before: all of them are written beside their place first, and `goesOn` is asked before
    /// each; where it says no, everything stays as it was. Returns an empty text, or what failed.
    QString write(const GoesOn &goesOn = {});

    /// Puts back what the last write() replaced, and takes away what it added. Returns an empty text, or what
    /// failed.
    QString undo();

private:
    Loaded<Securities> securities() const;
    QString path(const QString &name) const;
    bool isThere(const QString &name) const;
    Loaded<Bars> days(const QString &name, const QString &code) const;
    QString planDays(const QString &file, bool replacesAll, BarImportPlan *plan) const;
    void planMinutes(BarImportPlan *plan) const;
    QString readKnown();
    void keep(const BarImportPlan &plan);
    QString noteBefore(const QString &name);

    QString m_folder;
    std::map<QString, QByteArray> m_files; ///< planned, by their names
    Securities m_securities;               ///< of the planned files
    std::optional<Securities> m_known;     ///< with those of the folder; read once, for thousands of files
    QHash<QString, Trading::Market> m_markets; ///< of these, by their codes
    /// What write() found in the places of its files, by their names; nothing where no file was.
    std::map<QString, std::optional<QByteArray>> m_before;
};

} // namespace Terminal

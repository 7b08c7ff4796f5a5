#pragma once

#include "modelcatalogue.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

// pattern.ini beside the program assigns skin types that name no model to a
// model: one pattern per line, "<model's SkinType>,<skin type>,<skin type>...",
// no header, no quoting; skin types are compared case-sensitively.

QString PatternFilePath();

// The patterns of the file's lines as the table holds them: every pattern
// line gets its own record, in file order; blank lines and empty fields are
// dropped; the table starts with two free records and each record's skin
// types with two free entries, as every table of the catalogue does.
QList<SkinPattern> ParsePatternLines(const QStringList &lines);
// The file's lines for the occupied records, without empty entries.
QStringList PatternLines(const QList<SkinPattern> &patterns);

// Reads pattern.ini into Catalogue().PatternList. A file that is missing or
// cannot be read is said once through the prompt and gives no patterns.
void LoadPatternList();
// Writes `patterns` to pattern.ini (atomically, ANSI, CR LF), then makes them
// Catalogue().PatternList. Throws RunError and changes nothing on failure.
void SavePatternList(const QList<SkinPattern> &patterns);

// One file of the pattern editor's list: a skin file that matched no model
// and, once the user has chosen one, the description of its model.
struct PatternAssignment
{
    QString path;
    QString modelDescription; // empty while the file is not assigned

    // The list's item: the path, followed by " - " and the model when assigned.
    QString text() const;
};

// The pattern editor's list, filled by the unmatched report's Continue.
QList<PatternAssignment> &PatternEditorFiles();

// The editor's model choices: the Description of every MISCCLASSES slot in
// index order, free slots giving blank items; "(NONE)" alone when there
// are no slots at all.
QStringList PatternModelChoices();

// An edit of the saved patterns. The pattern editor keeps the user's edits
// as these, so that they are made on pattern.ini as it is when they are
// saved, not as it was read at start-up: a change another window or a
// command has made since is kept.
using PatternEdit = std::function<void(QList<SkinPattern> &)>;

// The editor's Finished. Under the file's lock, pattern.ini is read again,
// `edits` are made on it in order, and each assigned file's skin type (from
// its UnmatchedSkins record) joins the pattern of the model with that
// description, compared without regard to case, or a new pattern for it;
// the result is written when its lines differ and becomes
// Catalogue().PatternList. The assigned files are handed to the scan to be
// parsed again (ReparseFiles, ReparseRequested). Throws RunError when the
// file cannot be read or written; the patterns and the hand-over are then
// unchanged.
void FinishPatterns(const QList<PatternAssignment> &files, const QList<PatternEdit> &edits = {});

// The same rule on a table alone: `skinType` joins the record of `model` (a
// model's SkinType), or starts one in the first free record or a new one.
void AddToPattern(QList<SkinPattern> &patterns, const QString &model, const QString &skinType);

// Changes to saved patterns, made on `patterns`, which keeps one record per
// line of the file in order; each answers whether anything changed.
//   ForgetSkinType: `skinType` leaves every pattern; a pattern left with no
//   skin types goes.
//   ForgetPattern: the whole pattern of the model `model` goes.
//   MoveSkinType: `skinType` leaves its patterns and joins the one of `model`.
bool ForgetSkinType(QList<SkinPattern> &patterns, const QString &skinType);
bool ForgetPattern(QList<SkinPattern> &patterns, const QString &model);
bool MoveSkinType(QList<SkinPattern> &patterns, const QString &skinType, const QString &model);
// ForgetSkinType on pattern.ini as it is, written when anything changed, as
// FinishPatterns does.
bool ForgetSkinType(const QString &skinType);

// The editor's buttons that talk to the user. RemovePatternAssignment asks
// before it undoes the file's assignment in the list (pattern.ini is only
// written by Finished) and answers whether it did.
bool RemovePatternAssignment(PatternAssignment &file);
void ShowSetPatternHelp();
void ShowRemovePatternHelp();

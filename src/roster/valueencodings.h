#pragma once

#include "catalogue/modelcatalogue.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

// Conversions between the editor's slider positions and list entries, the
// roster's stored values and the texts of configuration files. `bFull` gives
// the file form ("0.350000"), otherwise the short display form ("0.35").
// The position readers take a whole file line ("BotAccuracy[3]=-0.350000")
// and throw RunError 13 (type mismatch) on text that is not a number.

QString GetSkillText(qint16 position, bool bFull);
qint16 GetSkillPosition(const QString &line);

// Accuracy and alertness move in steps of 5: a position off the step is
// snapped toward zero, and the snapped value is written back to `position`.
QString GetAccuracyText(qint16 &position, bool bFull);
QString GetAlertnessText(qint16 &position, bool bFull);
qint16 GetAccuracyPosition(const QString &line);
qint16 GetAlertnessPosition(const QString &line);

QString GetCampingText(qint16 position, bool bFull);
qint16 GetCampingPosition(const QString &line);

QString GetStrafingText(qint16 position, bool bFull);
qint16 GetStrafingPosition(const QString &line);

// The editor's fixed lists, captions in list order.
const QStringList &TeamCaptions();
const QStringList &WeaponCaptions();
const QStringList &CombatStyleCaptions();
const QStringList &DifficultyCaptions();

// Combat style: caption to stored text ("" for an unknown caption), and the
// list index for a stored text (none for an unknown text, which leaves the
// list's selection unchanged).
QString GetCombatStyleValue(const QString &name);
std::optional<int> CombatStyleIndex(const QString &value);

// Teams: caption to team number (0 for an unknown caption), and the list
// index for a team number.
qint16 TeamNumber(const QString &caption);
std::optional<int> TeamIndex(qint16 team);

// Favourite weapon: list index to class name ("" outside the list), and the
// list index for a class name (exact, case-sensitive).
QString GetWeaponCode(int listNum);
std::optional<int> WeaponIndex(const QString &weaponCode);

// The voice class of the first voice whose description is `caption`
// (exact); "(NONE)" when there is none or its class is empty.
QString GetVoiceCode(const QString &caption, const QList<VoiceEntry> &voices = Catalogue().VoiceList);

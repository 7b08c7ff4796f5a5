#pragma once

// For the GUI tests only (they link the forms).

#include "roster/botroster.h"
#include "roster/forms/frmBots.h"

#include <QCheckBox>
#include <QComboBox>

// What the start-up sequence does to the editor before it shows it.
inline void prepareLikeStartup(frmBots &form)
{
    form.cmbBot->setCurrentIndex(0);
    form.cmbDifficulty->setCurrentIndex(0);
    SetDefaults();
    form.FillClassList();
    form.cmbClass->setCurrentIndex(0);
    form.RefreshSkins(0);
    form.cmbSkin->setCurrentIndex(0);
    form.RefreshFaces(0, 0);
    form.cmbFace->setCurrentIndex(0);
    form.RefreshVoice(0);
    form.SetVoice();
    form.OtherData(0);
    form.SetBotConfigSettings();
    form.chkJumpy->setText(QString());
}

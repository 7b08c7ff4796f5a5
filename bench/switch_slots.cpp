// Times switching slots in the editor when one class has 2,000 skins: each
// switch between a slot of that class and one of another class rebuilds
// the skin list. The baseline fills a combo box of its own with the same
// 2,000 descriptions, without the window.
//
//   bench_switch_slots      (QT_QPA_PLATFORM=offscreen where there is no display)
//
// Prints the median and the worst of 100 switches and says PASS when the
// worst is under one frame at 60 Hz (16 ms).
#include "catalogue/modelcatalogue.h"
#include "roster/botroster.h"
#include "roster/forms/frmBots.h"
#include "samplecatalogue.h"

#include <QApplication>
#include <QComboBox>
#include <QElapsedTimer>

#include <algorithm>
#include <cstdio>
#include <functional>

namespace {

constexpr int SkinCount = 2000;
constexpr int Switches = 100;
constexpr double FrameMs = 16.0;
const QString LargeClass = QStringLiteral("MyMods.Warrior");

// The times of `Switches` runs of `step`, sorted; `prepare` runs untimed
// before each.
QList<double> timesMs(const std::function<void(int)> &prepare, const std::function<void(int)> &step)
{
    QList<double> times;
    QElapsedTimer timer;
    for (int i = 0; i < Switches; ++i) {
        prepare(i);
        timer.start();
        step(i);
        times.append(double(timer.nsecsElapsed()) / 1e6);
    }
    std::sort(times.begin(), times.end());
    return times;
}

double median(const QList<double> &sorted)
{
    return sorted.at(sorted.size() / 2);
}

// The editor as start-up leaves it, with every odd slot a bot of the large
// class, each with its own skin.
void prepareEditor(frmBots &form)
{
    SetDefaults();
    for (int slot = 1; slot < 32; slot += 2) {
        Roster().BotClasses[slot] = LargeClass;
        Roster().BotSkins[slot]
            = QStringLiteral("WarSkins.w%1").arg(slot * 50, 4, 10, QLatin1Char('0'));
    }
    form.FillClassList();
    form.cmbClass->setCurrentIndex(0);
    form.RefreshSkins(0);
    form.RefreshFaces(0, 0);
    form.RefreshVoice(0);
    form.SetVoice();
    form.OtherData(0);
    form.SetBotConfigSettings();
    form.show();
    form.EnableAll(true);
    form.PositionSlot();
}

QStringList largeClassDescriptions()
{
    for (const MISCLASS &model : Catalogue().MISCCLASSES) {
        if (model.ClassName != LargeClass)
            continue;
        QStringList descriptions;
        for (const SkinEntry &skin : model.Skins) {
            if (!skin.Description.isEmpty())
                descriptions.append(skin.Description);
        }
        return descriptions;
    }
    return {};
}

} // namespace

int main(int argc, char **argv)
{
    QApplication app(argc, argv);
    Catalogue() = SampleCatalogue(SkinCount);

    QComboBox list;
    const QStringList descriptions = largeClassDescriptions();
    const QList<double> baseline
        = timesMs([&](int) { list.clear(); }, [&](int) { list.addItems(descriptions); });

    frmBots form;
    prepareEditor(form);
    // Each timed switch goes from slot 0 (another class) to a slot of the
    // large class, so that each one rebuilds the 2,000 skins.
    qsizetype shownSkins = 0;
    const QList<double> switches = timesMs(
        [&](int) {
            form.cmbBot->setCurrentIndex(0);
            app.processEvents();
        },
        [&](int i) {
            form.cmbBot->setCurrentIndex(1 + 2 * (i % 16));
            app.processEvents();
            shownSkins = form.cmbSkin->count();
        });
    if (shownSkins < descriptions.size()) {
        std::printf("the editor showed %lld skins, not the class's %lld\n",
            static_cast<long long>(shownSkins), static_cast<long long>(descriptions.size()));
        return 1;
    }

    std::printf("skins in the class: %lld\n", static_cast<long long>(descriptions.size()));
    std::printf("rebuilding the list alone: median %.2f ms, worst %.2f ms\n", median(baseline),
        baseline.constLast());
    std::printf("switching slots:           median %.2f ms, worst %.2f ms\n", median(switches),
        switches.constLast());
    std::printf("switch / list alone (medians): %.2f\n", median(switches) / median(baseline));
    const bool pass = switches.constLast() < FrameMs;
    std::printf("worst switch %.2f ms (target < %.0f ms)  %s\n", switches.constLast(), FrameMs,
        pass ? "PASS" : "FAIL");
    return pass ? 0 : 1;
}

#include "app/aboutBox.h"

#include <QCoreApplication>
#include <QMessageBox>
#include <QString>
#include <QStringList>

namespace {

/// The context of the texts below for translations.
struct cAboutBox {
    Q_DECLARE_TR_FUNCTIONS(cAboutBox)
};

QStringList statisticsOf(const QString& element, const QStringList& names) {
    QStringList items;
    for (const QString& name : names) items.append(QStringLiteral("<i>%1</i>.%2").arg(element, name));
    return items;
}

QString htmlList(const QStringList& items) {
    return QStringLiteral("<ul><li>") + items.join(QStringLiteral("</li><li>")) + QStringLiteral("</li></ul>");
}

QStringList globalVariables() {
    return QStringList{QStringLiteral("SimTime")} +
           statisticsOf(cAboutBox::tr("ActivityName"),
                        {"AveDur", "AveInter", "CurInst", "InContext", "FirstStart", "LastStart", "MaxDur", "MaxInter",
                         "MinDur", "MinInter", "SDDur", "SDInter", "TotInst"}) +
           statisticsOf(cAboutBox::tr("QueueName"), {"LastAmtReceived", "AveCount", "AveWait", "CurCount", "MaxCount",
                                                     "MinCount", "SDCount", "TotCount"});
}

QStringList functions() {
    return {"Exponential[mean]",        "Gamma[a,b]",
            "Normal[mean,sd]",          "NormalInv[mean,stdev,cumulative]",
            "StdNormalInv[Cumulative]", "Triangular[low,mode,high]",
            "Uniform[low,high]"};
}

}  // namespace

QString aboutText() {
    return cAboutBox::tr(
        "Version 1.0.0\n"
        "Discrete-event simulation of construction operations.\n"
        "Copyright (c) 2026 TIMBERSIM contributors. Released under the MIT License.");
}

QString functionListText() {
    return cAboutBox::tr(
               "<b>Variables and Functions available in TIMBERSIM</b>"
               "<p>Replace words in <i>italics</i> by the names of elements. Parameters of functions go in "
               "square brackets.</p>") +
           cAboutBox::tr("<p>Global variables:</p>") + htmlList(globalVariables()) +
           cAboutBox::tr("<p>Functions:</p>") + htmlList(functions());
}

void showAbout(QWidget* parent) { QMessageBox::about(parent, cAboutBox::tr("About TIMBERSIM"), aboutText()); }

void showFunctionList(QWidget* parent) {
    QMessageBox::about(parent, cAboutBox::tr("Variables and Functions in TIMBERSIM"), functionListText());
}

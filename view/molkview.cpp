// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "molkview.h"

#include "ui_changedbanner.h"
#include "ui_molkview.h"

#include "modal.h"
#include "molkfile.h"
#include "molkview_p.h"
#include "retirement.h"

#include "te/designmanager.h"
#include "te/taskengine.h"

#include <QCloseEvent>
#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QFileSystemWatcher>
#include <QPointer>
#include <QStyle>

namespace MOLK {

// What the list of cores needs for its title, its longest line and its one column, which starts
// with a width of its own. The stretch of the layout would cut them off in a narrow view.
static int corePaneWidth(const QTreeWidget *tree, const QString &title)
{
    const QFontMetrics metrics(tree->font());
    const QStyle *style = tree->style();
    const int textMargin = style->pixelMetric(QStyle::PM_FocusFrameHMargin) + 1;
    const int line = tree->indentation() + metrics.horizontalAdvance("molk_15") + 2 * textMargin;
    const int column = qMax(line, tree->header()->defaultSectionSize()) + 2 * tree->frameWidth();
    const int titleMargin = style->pixelMetric(QStyle::PM_DockWidgetTitleMargin)
        + style->pixelMetric(QStyle::PM_DockWidgetFrameWidth) + textMargin;
    return qMax(column, metrics.horizontalAdvance(title) + 2 * titleMargin);
}

MolkView::MolkView(QWidget *parent)
    : Core::IView(parent)
    , ui(new Ui::MolkView)
{
    ui->setupUi(this);
    d = new private_impl::MolkViewPrivate(this);
    d->modificationChanged = [this](bool modified) {
        emit modificationStatusChanged(modified);
    };

    Ui::ChangedBanner changedBanner;
    changedBanner.setupUi(ui->widget_2);
    connect(changedBanner.okBtn, SIGNAL(clicked()), this, SLOT(onOKBtn()));
    ui->widget_2->hide();

    auto *bannerLayout = new QHBoxLayout;
    bannerLayout->setSpacing(0);
    bannerLayout->setContentsMargins(0, 0, 0, 0);
    ui->widget_3->setLayout(bannerLayout);
    ui->widget_3->hide();

    ui->treeWidget->setMinimumWidth(corePaneWidth(ui->treeWidget, ui->dockWidget->windowTitle()));

    subscribeEvent();
}

MolkView::~MolkView()
{
    unsubscribeEvent();
    retireChildren(this);
    delete ui;
    delete d;
}

bool MolkView::open(const QString &fileName, const QString &resultFile, QString *error)
{
    Q_UNUSED(resultFile)
    qDebug() << " This is open file to Molk";
    // A new view watches nothing yet, and Qt warns of an empty path.
    if (!d->file.isEmpty())
        d->watcher->removePath(d->file);
    d->file = fileName;
    d->watcher->addPath(d->file);

    if (!checkMOLKFile(fileName)) {
        if (error)
            *error = QString("%1 open file failed.").arg(fileName);
        return false;
    }
    bool ok = false;
    d->cores = readMOLKConfigFromXml(fileName, &ok, error);
    if (!ok)
        return false;

    d->makePages();
    setWindowTitle(QFileInfo(fileName).fileName());
    changeMolkWidget(0);
    return readRtlNetlist();
}

bool MolkView::save()
{
    const TE::DesignManager *designManager = TE::TaskEngine::instance()->designManager();
    const QString tool = designManager->getOptionValue("Synthesize_tool").toString();
    if (tool == "Synplify") {
        showMessage(this, QMessageBox::Critical, "Error",
                    "For RTL Design, MOLK is only available for OndrelSynthesis. Please change "
                    "Synthesis Tool to OndrelSynthesis in Configurations.");
        return false;
    }
    return d->saveFile();
}

QString MolkView::file() const
{
    return d->file;
}

QString MolkView::device() const
{
    return deviceName;
}

void MolkView::setDevice(const QString &name)
{
    deviceName = name;
}

bool MolkView::isModified() const
{
    return d->modified;
}

void MolkView::setModified(bool modified)
{
    d->modified = modified;
    emit modificationStatusChanged(modified);
}

void MolkView::onModified()
{
    if (d->modified)
        return;
    d->modified = true;
    d->modificationChanged(true);
    const QString title = QFileInfo(d->file).fileName() + " *";
    setWindowTitle(title);
    setShortTitle(title);
}

void MolkView::onOKBtn()
{
    ui->widget_2->hide();
}

void MolkView::closeEvent(QCloseEvent *event)
{
    if (d->modified) {
        const QPointer<MolkView> guard(this);
        const QMessageBox::StandardButton answer = showMessage(
            this, QMessageBox::Question, tr("Save"),
            tr("Save changes to \"%1\" ?").arg(QDir::toNativeSeparators(d->file)),
            QMessageBox::Ok | QMessageBox::Discard | QMessageBox::Cancel, QMessageBox::Ok);
        if (!guard)
            return;
        // The user has named this file and wants it written, so no tool is asked about here.
        const bool mayClose =
            answer == QMessageBox::Discard || (answer == QMessageBox::Ok && d->saveFile());
        if (!guard)
            return;
        if (!mayClose) {
            event->ignore();
            return;
        }
    }
    QWidget::closeEvent(event);
}

} // namespace MOLK

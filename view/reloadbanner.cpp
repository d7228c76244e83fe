// SPDX-FileCopyrightText: The project's authors
// SPDX-License-Identifier: MIT

#include "reloadbanner.h"

#include "ui_reloadbanner.h"

#include <QDir>

namespace MOLK {

ReloadBanner::ReloadBanner(int mode, const QString &file, QWidget *parent)
    : QWidget(parent)
    , ui(new Ui::ReloadBanner)
{
    ui->setupUi(this);

    const QString shownFile = QDir::toNativeSeparators(file);
    if (mode == FileChanged) {
        setBannerText(tr("The file '%1' changed on disk.\nDo you want to reload?").arg(shownFile));
        ui->btnA->setText(tr("Reload"));
        ui->btnB->setText(tr("Cancel"));
        connect(ui->btnA, SIGNAL(clicked()), this, SIGNAL(reload()));
        connect(ui->btnB, SIGNAL(clicked()), this, SIGNAL(cancel()));
    } else if (mode == FileRemoved) {
        setBannerText(tr("The file '%1' has been removed on disk.\nDo you still want to keep it?")
                          .arg(shownFile));
        ui->btnA->setText(tr("Keep It"));
        ui->btnB->setText(tr("Close"));
        connect(ui->btnA, SIGNAL(clicked()), this, SIGNAL(keepIt()));
        connect(ui->btnB, SIGNAL(clicked()), this, SIGNAL(closeIt()));
    }
}

ReloadBanner::~ReloadBanner()
{
    delete ui;
}

void ReloadBanner::setBannerText(const QString &text)
{
    QLabel *label = ui->labelFile;
    // A file's name may look like markup, and may be longer than the view is wide.
    label->setTextFormat(Qt::PlainText);
    label->setText(text);

    // A label that may wrap asks for a third of the width that a banner usually has. It is given
    // what its lines take as long as there is that much.
    label->setWordWrap(false);
    label->ensurePolished();
    label->setMaximumWidth(label->sizeHint().width());
    label->setWordWrap(true);
    QSizePolicy policy = label->sizePolicy();
    policy.setHorizontalStretch(1);
    label->setSizePolicy(policy);
}

} // namespace MOLK

// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/shell/translations.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QTranslator>

#include "core/common/logging.h"

bool installTranslations(QCoreApplication& app, const QLocale& locale) {
    auto* qt = new QTranslator(&app);
    if (qt->load(locale, QStringLiteral("qtbase"), QStringLiteral("_"),
                 QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(qt);
    else
        delete qt;
    auto* own = new QTranslator(&app);
    if (!own->load(locale, QStringLiteral("tagsmith"), QStringLiteral("_"),
                   QStringLiteral(":/i18n"))) {
        delete own;
        return false;
    }
    QCoreApplication::installTranslator(own);
    qCInfo(lcTagsmith) << "translation ==" << own->language();
    return true;
}

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLocale>

class QCoreApplication;

// Installs the program's translation for `locale` (embedded under :/i18n) and
// Qt's own (standard buttons and dialogs) from Qt's translations folder.
// Answers whether the program's own translation was found; English needs none.
bool installTranslations(QCoreApplication& app, const QLocale& locale = QLocale::system());

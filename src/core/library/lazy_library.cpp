// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/library/lazy_library.h"

#include <QFile>
#include <QFileInfo>

#include <dlfcn.h>

#include "core/common/logging.h"

namespace {

// A module of ours: below the folder that holds the running program's own
// folder, as installed (/usr/bin and /usr/lib/tagsmith) and as staged in the
// build tree. Never searched for: no other file of that name is loaded.
QByteArray modulePath(const char* name) {
    const QString programs = QFileInfo(QStringLiteral("/proc/self/exe")).canonicalPath();
    return QFile::encodeName(programs + QStringLiteral("/../" TAGSMITH_MODULE_DIR "/")) + name;
}

}  // namespace

void* LazyLibrary::symbol(const char* name) {
    std::call_once(m_once, [this] {
        const QByteArray file = m_place == OurModule ? modulePath(m_soname) : m_soname;
        m_handle = dlopen(file.constData(), RTLD_NOW | RTLD_LOCAL);
        if (!m_handle)
            qCWarning(lcTagsmith).noquote()
                << file << "cannot be loaded," << m_loss << "==" << dlerror();
    });
    if (!m_handle) return nullptr;
    void* found = dlsym(m_handle, name);
    if (!found) qCWarning(lcTagsmith) << "function not found ==" << m_soname << name << dlerror();
    return found;
}

// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/library/lazy_library.h"

#include <dlfcn.h>

#include "core/common/logging.h"

void* LazyLibrary::symbol(const char* name) {
    std::call_once(m_once, [this] {
        m_handle = dlopen(m_soname, RTLD_NOW | RTLD_LOCAL);
        if (!m_handle)
            qCWarning(lcTagsmith).noquote()
                << m_soname << "cannot be loaded," << m_loss << "==" << dlerror();
    });
    if (!m_handle) return nullptr;
    void* found = dlsym(m_handle, name);
    if (!found) qCWarning(lcTagsmith) << "function not found ==" << m_soname << name << dlerror();
    return found;
}

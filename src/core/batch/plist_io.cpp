// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/batch/plist_io.h"
#include "core/common/ui_texts.h"

#include <QDateTime>
#include <QFile>

#include <plist/plist.h>

#include <cstdlib>
#include <memory>

namespace {

// Seconds between the Unix epoch and the property-list epoch (2001-01-01).
constexpr qint64 kPlistEpoch = 978307200;

struct PlistFree {
    void operator()(plist_t node) const { plist_free(node); }
};
using PlistPtr = std::unique_ptr<std::remove_pointer_t<plist_t>, PlistFree>;

plist_t toNode(const QVariant& value) {
    switch (value.typeId()) {
        case QMetaType::QVariantMap: {
            plist_t dict = plist_new_dict();
            const QVariantMap map = value.toMap();
            for (auto it = map.cbegin(); it != map.cend(); ++it)
                plist_dict_set_item(dict, it.key().toUtf8().constData(), toNode(it.value()));
            return dict;
        }
        case QMetaType::QVariantList:
        case QMetaType::QStringList: {
            plist_t array = plist_new_array();
            for (const QVariant& v : value.toList()) plist_array_append_item(array, toNode(v));
            return array;
        }
        case QMetaType::Bool:
            return plist_new_bool(value.toBool());
        case QMetaType::Int:
        case QMetaType::UInt:
        case QMetaType::LongLong:
        case QMetaType::ULongLong:
            return plist_new_uint(uint64_t(value.toLongLong()));
        case QMetaType::Double:
        case QMetaType::Float:
            return plist_new_real(value.toDouble());
        case QMetaType::QByteArray: {
            const QByteArray bytes = value.toByteArray();
            return plist_new_data(bytes.constData(), uint64_t(bytes.size()));
        }
        case QMetaType::QDateTime: {
            const qint64 ms = value.toDateTime().toMSecsSinceEpoch() - kPlistEpoch * 1000;
            return plist_new_date(int32_t(ms / 1000), int32_t((ms % 1000) * 1000));
        }
        default:
            return plist_new_string(value.toString().toUtf8().constData());
    }
}

QVariant fromNode(plist_t node, int depth, QStringList* keyOrder = nullptr) {
    if (!node || depth > 64) return {};
    switch (plist_get_node_type(node)) {
        case PLIST_DICT: {
            QVariantMap map;
            plist_dict_iter it = nullptr;
            plist_dict_new_iter(node, &it);
            for (;;) {
                char* key = nullptr;
                plist_t item = nullptr;
                plist_dict_next_item(node, it, &key, &item);
                if (!key) break;
                const QString name = QString::fromUtf8(key);
                std::free(key);
                if (keyOrder) keyOrder->append(name);
                map.insert(name, fromNode(item, depth + 1));
            }
            std::free(it);
            return map;
        }
        case PLIST_ARRAY: {
            QVariantList list;
            const uint32_t n = plist_array_get_size(node);
            for (uint32_t i = 0; i < n; ++i)
                list.append(fromNode(plist_array_get_item(node, i), depth + 1));
            return list;
        }
        case PLIST_BOOLEAN: {
            uint8_t b = 0;
            plist_get_bool_val(node, &b);
            return bool(b);
        }
        case PLIST_UINT: {
            uint64_t v = 0;
            plist_get_uint_val(node, &v);
            return qlonglong(v);
        }
        case PLIST_REAL: {
            double v = 0;
            plist_get_real_val(node, &v);
            return v;
        }
        case PLIST_STRING: {
            char* s = nullptr;
            plist_get_string_val(node, &s);
            const QString text = QString::fromUtf8(s);
            std::free(s);
            return text;
        }
        case PLIST_DATA: {
            char* d = nullptr;
            uint64_t n = 0;
            plist_get_data_val(node, &d, &n);
            const QByteArray bytes(d, qsizetype(n));
            std::free(d);
            return bytes;
        }
        case PLIST_DATE: {
            int32_t sec = 0, usec = 0;
            plist_get_date_val(node, &sec, &usec);
            return QDateTime::fromMSecsSinceEpoch((kPlistEpoch + sec) * 1000 + usec / 1000,
                                                  Qt::UTC);
        }
        default:
            return {};
    }
}

}  // namespace

QByteArray plistXml(const QVariant& root) {
    const PlistPtr node(toNode(root));
    char* xml = nullptr;
    uint32_t length = 0;
    plist_to_xml(node.get(), &xml, &length);
    if (!xml) return {};
    QByteArray out(xml, qsizetype(length));
    plist_to_xml_free(xml);
    return out;
}

PlistRead readPlistData(const QByteArray& data) {
    PlistRead read;
    plist_t raw = nullptr;
    if (!data.isEmpty()) plist_from_memory(data.constData(), uint32_t(data.size()), &raw);
    const PlistPtr node(raw);
    if (!node) {
        read.problem = WriteResult::tr("the file is not a property list");
        return read;
    }
    read.root = fromNode(node.get(), 0, &read.keyOrder);
    return read;
}

PlistRead readPlistFile(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        PlistRead read;
        read.problem = WriteResult::tr("the file cannot be read: %1").arg(file.errorString());
        return read;
    }
    constexpr qint64 kLimit = qint64(64) << 20;
    if (file.size() > kLimit) {
        PlistRead read;
        read.problem = WriteResult::tr("the file is too large for a property list");
        return read;
    }
    return readPlistData(file.read(kLimit));
}

#pragma once

#include <QString>
#include <cstddef>

// A node key as the keyed tree hashes it. Node keys are short ("KP_12",
// "MT_3456"), and Qt 6.4 hashes strings under eight characters on an AES
// path that, on CPUs running wider vector code around it, costs some twenty
// times what a plain hash of the same few characters does: filling a large
// library spent most of its extra time there. FNV-1a over the UTF-16 units
// spreads these keys just as well.
struct ClaveNodo {
    QString texto;

    friend bool operator==(const ClaveNodo& a, const ClaveNodo& b) { return a.texto == b.texto; }

    friend size_t qHash(const ClaveNodo& clave, size_t seed) noexcept
    {
        constexpr size_t primo = sizeof(size_t) > 4 ? size_t(1099511628211ULL) : size_t(16777619U);
        size_t h = (sizeof(size_t) > 4 ? size_t(14695981039346656037ULL) : size_t(2166136261U)) ^ seed;
        for (const QChar c : clave.texto) {
            h = (h ^ c.unicode()) * primo;
        }
        return h;
    }
};

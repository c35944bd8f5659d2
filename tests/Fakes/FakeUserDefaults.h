#pragma once

#include "Platform/UserDefaults.h"

#include <QVariantMap>

namespace Fakes {

/// In memory; what is stored can be looked at as a whole.
class FakeUserDefaults final : public Platform::UserDefaults {
public:
    QVariant value(const QString& key) const override { return values.value(key); }
    void setValue(const QString& key, const QVariant& value) override { values.insert(key, value); }
    void remove(const QString& key) override { values.remove(key); }

    QVariantMap values;
};

} // namespace Fakes

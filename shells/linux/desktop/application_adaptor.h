#pragma once
// The object that other processes see on D-Bus: org.freedesktop.Application, of which the program
// has use for the activation alone.

#include "shells/linux/desktop/single_instance.h"

#include <QDBusAbstractAdaptor>
#include <QStringList>
#include <QVariantMap>

namespace kestrel::linux_shell {

/// Belongs to its instance.
class ApplicationAdaptor final : public QDBusAbstractAdaptor {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

  public:
    explicit ApplicationAdaptor(SingleInstance& instance)
        : QDBusAbstractAdaptor(&instance), instance_(instance) {}

  public Q_SLOTS:
    void Activate(const QVariantMap& platformData) { instance_.activate(platformData); }

    /// The program opens no files for others; it just comes forward.
    void Open(const QStringList& uris, const QVariantMap& platformData) {
        Q_UNUSED(uris)
        Activate(platformData);
    }

    /// It has no actions; an unknown one does nothing.
    void ActivateAction(const QString& name, const QVariantList& parameter,
                        const QVariantMap& platformData) {
        Q_UNUSED(name)
        Q_UNUSED(parameter)
        Q_UNUSED(platformData)
    }

  private:
    SingleInstance& instance_;
};

} // namespace kestrel::linux_shell

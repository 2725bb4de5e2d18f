#pragma once
// Environment variables that a test sets and that are gone after it.

#include <QByteArray>
#include <QMap>
#include <QtGlobal>

namespace kestrel::linux_shell {

class Variables {
  public:
    Variables() = default;
    ~Variables() {
        for (const QByteArray& name : names_)
            before_.value(name).isNull() ? qunsetenv(name) : qputenv(name, before_.value(name));
    }
    Variables(const Variables&) = delete;
    Variables& operator=(const Variables&) = delete;

    void set(const QByteArray& name, const QByteArray& value) {
        if (!names_.contains(name)) {
            names_.append(name);
            before_.insert(name, qgetenv(name));
        }
        qputenv(name, value);
    }

  private:
    QByteArrayList names_;
    QMap<QByteArray, QByteArray> before_;
};

} // namespace kestrel::linux_shell

#pragma once
// Work that may block (probing the local model server, the credential store, the network) run
// off the GUI thread, its result handed back on the receiver's thread. The pool belongs to the
// receiver and is waited for before the receiver goes, so a result never reaches a destroyed
// object. Thread contract: call on the receiver's (main) thread; `work` runs on a pool thread and
// touches only objects that outlive the pool; `done` runs on the receiver's thread.

#include <QMetaObject>
#include <QObject>
#include <QThreadPool>
#include <memory>
#include <utility>

namespace vesko::desktop {

template <typename Work, typename Done>
void offThread(QThreadPool& pool, QObject* receiver, Work work, Done done) {
  pool.start([receiver, work = std::move(work), done = std::move(done)]() mutable {
    auto result = std::make_shared<decltype(work())>(work());
    QMetaObject::invokeMethod(
        receiver, [done, result]() mutable { done(std::move(*result)); }, Qt::QueuedConnection);
  });
}

}  // namespace vesko::desktop

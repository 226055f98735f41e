#include "drive/headless_host.h"

#include <QThread>

namespace drive {

void HeadlessHost::Sleep(int milliseconds) {
    QThread::msleep(static_cast<unsigned long>(milliseconds));
}

}  // namespace drive

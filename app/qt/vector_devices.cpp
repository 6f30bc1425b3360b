// The paint devices of the vector formats Qt has no engine for.
#include "app/qt/picture_devices.h"

namespace zendrite::qt {

std::unique_ptr<QPaintDevice> Vector_Device(const std::string&, QIODevice*, int, int, int) { return nullptr; }

}  // namespace zendrite::qt

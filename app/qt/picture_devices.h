#pragma once
// Pictures drawn into files and printers. Not for use outside app/qt/.
#include <QIODevice>
#include <QPaintDevice>
#include <QPainter>
#include <memory>
#include <string>

#include "app/present.h"

namespace zendrite::qt {

// From here to End_Export every drawing operation paints through `p`, on a target of
// width by height pixels, with `dot_scale` target pixels for a pixel of the screen.
void Begin_Export(QPainter& p, int width, int height, double dot_scale, const PICTURE_OPTIONS& o);
void End_Export();

// A paint device writing `format` ("eps", "ps", "emf", "plt", "dxf") into `out`, of width by
// height pixels at `dpi`; null for another format.
std::unique_ptr<QPaintDevice> Vector_Device(const std::string& format, QIODevice* out, int width, int height, int dpi);

}  // namespace zendrite::qt

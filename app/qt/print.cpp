// Printing: Qt's print dialog and preview; the picture is drawn again on the page.
#include <QPrintDialog>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <algorithm>
#include <iostream>

#include "app/qt/picture_devices.h"
#include "app/qt/present_state.h"

namespace zendrite {
using namespace qt;

namespace {

// The picture at the options' proportions, as large as the page's printable area allows, centred.
bool print_on(QPrinter& printer, const PICTURE_OPTIONS& o, const std::function<void()>& draw) {
    QPainter p;
    if (!p.begin(&printer)) return false;
    const QRect page = printer.pageLayout().paintRectPixels(printer.resolution());
    const double aspect = o.width / o.height;
    double w = page.width(), h = w / aspect;
    if (h > page.height()) h = page.height(), w = h * aspect;
    // The painter's origin is already the printable area's corner.
    p.translate((page.width() - w) / 2, (page.height() - h) / 2);
    Begin_Export(p, static_cast<int>(w), static_cast<int>(h), printer.resolution() / 96.0, o);
    draw();
    End_Export();
    return p.end();
}

}  // namespace

bool WPrintPicture(const PICTURE_OPTIONS& o, bool preview, const std::function<void()>& draw, std::string& message) {
    LAYER& l = L();
    if (!(o.width > 0 && o.height > 0) || l.ex.on) {
        message = "Unable to print: the picture has no size";
        return false;
    }
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageOrientation(o.width >= o.height ? QPageLayout::Landscape : QPageLayout::Portrait);
    if (l.unattended) {
        // Scripts print into the PDF file they queue, as a file printer would.
        std::string file;
        if (!l.file_answers.empty()) {
            if (!l.file_answers.front().empty()) file = l.file_answers.front()[0];
            l.file_answers.pop_front();
        } else {
            std::cout << "UNANSWERED Print\n";
        }
        if (file.empty()) {
            message = "Cancelled";
            return false;
        }
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(Q(file));
    } else {
        if (preview) {
            QPrintPreviewDialog dlg(&printer, l.root);
            QObject::connect(&dlg, &QPrintPreviewDialog::paintRequested,
                             [&](QPrinter* pr) { print_on(*pr, o, draw); });
            if (dlg.exec() != QDialog::Accepted) {
                message = "Cancelled";
                return false;
            }
            return true;  // the preview's own Print button has printed it
        }
        QPrintDialog dlg(&printer, l.root);
        if (dlg.exec() != QDialog::Accepted) {
            message = "Cancelled";
            return false;
        }
    }
    if (!print_on(printer, o, draw)) {
        message = "Unable to print on " + S(printer.printerName().isEmpty() ? printer.outputFileName() : printer.printerName());
        return false;
    }
    return true;
}

}  // namespace zendrite

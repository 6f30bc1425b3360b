// File and directory selectors, message boxes and the colour chooser.
#include <QColorDialog>
#include <QFileDialog>
#include <QMessageBox>
#include <filesystem>
#include <iostream>

#include "app/qt/present_state.h"

namespace zendrite {
using namespace qt;

namespace {

// "label|a;b|label2|c|" -> "label (a b);;label2 (c)"
QString qt_filter(const std::string& filter) {
    QStringList parts = Q(filter).split('|');
    QStringList out;
    for (int i = 0; i + 1 < parts.size(); i += 2) {
        const QString label = parts[i].trimmed();
        const QString pats = parts[i + 1].split(';', Qt::SkipEmptyParts).join(' ');
        if (label.isEmpty() && pats.isEmpty()) continue;
        out << QString("%1 (%2)").arg(label, pats.isEmpty() ? QString("*") : pats);
    }
    return out.join(";;");
}

std::string file_list(const std::vector<std::string>& files) {
    if (files.size() == 1) return files[0];
    namespace fs = std::filesystem;
    std::string dir = fs::path(files[0]).parent_path().string();
    std::string out = dir;
    for (const auto& f : files) {
        out.push_back('\0');
        out += fs::path(f).filename().string();
    }
    return out;
}

}  // namespace

void WSelectFile(const std::string& filter, int flags, std::string& name, const std::string& title) {
    LAYER& l = L();
    std::vector<std::string> chosen;
    if (l.unattended) {
        if (l.file_answers.empty()) {
            std::cout << "UNANSWERED " << title << "\n";
        } else {
            chosen = l.file_answers.front();
            l.file_answers.pop_front();
        }
        if (!(flags & MultiFile) && chosen.size() > 1) chosen.resize(1);
    } else {
        const QString f = qt_filter(filter);
        if (flags & SaveDialog) {
            const QString s = QFileDialog::getSaveFileName(l.root, Q(title), Q(name), f);
            if (!s.isEmpty()) chosen.push_back(S(s));
        } else if (flags & MultiFile) {
            for (const QString& s : QFileDialog::getOpenFileNames(l.root, Q(title), QString(), f)) chosen.push_back(S(s));
        } else {
            const QString s = QFileDialog::getOpenFileName(l.root, Q(title), QString(), f);
            if (!s.isEmpty()) chosen.push_back(S(s));
        }
    }
    if (chosen.empty()) {
        l.info4 = kIdCancel;
        return;
    }
    name = file_list(chosen);
    l.info4 = kIdOk;
}

std::vector<std::string> Selected_Files(const std::string& name) {
    std::vector<std::string> parts;
    std::size_t start = 0;
    for (;;) {
        const std::size_t nul = name.find('\0', start);
        parts.push_back(name.substr(start, nul == std::string::npos ? std::string::npos : nul - start));
        if (nul == std::string::npos) break;
        start = nul + 1;
    }
    if (parts.size() == 1) return parts[0].empty() ? std::vector<std::string>{} : parts;
    std::vector<std::string> out;
    std::string dir = parts[0];
    if (!dir.empty() && dir.back() != '/' && dir.back() != '\\') dir += '/';
    for (std::size_t i = 1; i < parts.size(); ++i)
        if (!parts[i].empty()) out.push_back(dir + parts[i]);
    return out;
}

void WSelectDir(int /*flags*/, std::string& name, const std::string& title) {
    LAYER& l = L();
    std::string chosen;
    if (l.unattended) {
        if (l.file_answers.empty()) std::cout << "UNANSWERED " << title << "\n";
        else {
            if (!l.file_answers.front().empty()) chosen = l.file_answers.front()[0];
            l.file_answers.pop_front();
        }
    } else {
        chosen = S(QFileDialog::getExistingDirectory(l.root, Q(title), Q(name)));
    }
    if (chosen.empty()) {
        l.info4 = kIdCancel;
        return;
    }
    name = chosen;
    l.info4 = kIdOk;
}

void WMessageBox(int buttons, int icon, int def, const std::string& text, const std::string& title) {
    LAYER& l = L();
    std::string lines = text;
    for (char& c : lines)
        if (c == '\r') c = '\n';
    if (l.unattended || l.offscreen) {
        std::string flat;
        for (char c : lines) flat += c == '\n' ? std::string(" / ") : std::string(1, c);
        std::cout << "MESSAGE " << title << " | " << flat << std::endl;
        int answer = def == 2 ? 2 : 1;
        if (buttons == SaveDiscardCancel) answer = def >= kAnswerSave && def <= kAnswerCancel ? def : kAnswerCancel;
        if (!l.box_answers.empty()) {
            answer = l.box_answers.front();
            l.box_answers.pop_front();
        } else if (buttons == SaveDiscardCancel && l.script_ended) {
            answer = kAnswerDiscard;  // nobody is left to answer and the run must end
        }
        l.info4 = buttons == YesNo || buttons == SaveDiscardCancel ? answer : kIdOk;
        return;
    }
    QMessageBox box(l.root);
    box.setWindowTitle(Q(title));
    box.setText(Q(lines));
    box.setIcon(icon == StopIcon ? QMessageBox::Critical : icon == QuestionIcon ? QMessageBox::Question
                : icon == ExclamationIcon                   ? QMessageBox::Warning
                                                            : QMessageBox::Information);
    if (buttons == SaveDiscardCancel) {
        box.setStandardButtons(QMessageBox::Save | QMessageBox::Discard | QMessageBox::Cancel);
        box.setDefaultButton(def == kAnswerDiscard ? QMessageBox::Discard : def == kAnswerCancel ? QMessageBox::Cancel : QMessageBox::Save);
        box.setEscapeButton(QMessageBox::Cancel);
        const int b = box.exec();
        l.info4 = b == QMessageBox::Save ? kAnswerSave : b == QMessageBox::Discard ? kAnswerDiscard : kAnswerCancel;
    } else if (buttons == YesNo) {
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        box.setDefaultButton(def == 2 ? QMessageBox::No : QMessageBox::Yes);
        l.info4 = box.exec() == QMessageBox::Yes ? 1 : 2;
    } else {
        box.setStandardButtons(QMessageBox::Ok);
        box.exec();
        l.info4 = kIdOk;
    }
}

void WSelectColour(int& rgb) {
    LAYER& l = L();
    if (l.unattended) return;  // as at Cancel
    const QColor c = QColorDialog::getColor(Colour(rgb), l.root, "Select colour");
    if (c.isValid()) rgb = WRGB(c.red(), c.green(), c.blue());
}

}  // namespace zendrite

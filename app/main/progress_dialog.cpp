#include "app/main/progress_dialog.h"

#include <map>

namespace zendrite {

int Progress_Dialog(const std::string& title, int text_field, int bar_field) {
    static std::map<std::string, int> ids;
    int& id = ids[title];
    if (!id) {
        DIALOG_TEMPLATE t;
        DIALOG_FIELD bar = Fld(bar_field, FIELD_KIND::Progress, "");
        bar.low = 0;
        bar.high = 1;
        if (text_field) t.fields.push_back(Fld(text_field, FIELD_KIND::Label, ""));
        t.fields.push_back(bar);
        id = WDialogDefineTitled(title, t);
    }
    return id;
}

bool Progress_Cancel_Pressed(int id, std::vector<WIN_MESSAGE>& later) {
    bool cancel = false;
    while (WMessagePending()) {
        int type = 0;
        WIN_MESSAGE m;
        WMessage(type, m);
        if (m.win == id) {
            cancel = cancel || (type == PushButton && m.value1 == kIdCancel) || type == CloseRequest;
            continue;
        }
        if (type == MouseButDown || type == MouseButUp || type == MouseMove || type == MouseWheel) continue;
        if (type == CloseRequest) cancel = true;
        if (type == KeyDown && m.value1 == kKeyEscape) {
            cancel = true;
            continue;
        }
        later.push_back(m);
    }
    return cancel;
}

void Progress_Close(int id, const std::vector<WIN_MESSAGE>& later) {
    WDialogSelect(id);
    WDialogUnload();
    for (const WIN_MESSAGE& m : later) WMessagePost(m);
}

}  // namespace zendrite

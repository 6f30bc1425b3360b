// The word and number utilities and the format finder on arbitrary lines.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "support/edit_format.h"
#include "support/find_fmt.h"
#include "support/text_utils.h"

using namespace hxl;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    const std::size_t nl = text.find('\n');
    const std::string fields = text.substr(0, nl);
    const std::string line = nl == std::string::npos ? text : text.substr(nl + 1);

    Array1<float> vet(10), sd(10);
    Array1<int> ivet(10);
    int iv = 0;
    Getnum(line, vet, ivet, iv);
    if (iv < 0 || iv > 10) std::abort();
    Getnum_Std(line, vet, sd, iv);
    if (iv < 0 || iv > 10) std::abort();
    for (int i = 1; i <= iv; ++i) {
        std::string t;
        SetNum_Std(vet(i), sd(i), t);
        if (t.empty()) std::abort();
    }
    std::vector<std::string> words;
    int count = 0;
    Get_Words(line, words, count);
    if (count != static_cast<int>(words.size())) std::abort();
    std::string cut = line;
    int n1 = 0, n2 = 0;
    std::string word;
    Cutst(cut, &n1, &word, &n2);
    if (n1 != static_cast<int>(cut.size()) || n2 != static_cast<int>(word.size())) std::abort();

    std::string fmt;
    FindFMT(line, fields, fmt);
    if (ierr_fmt == FindFMT_No_Error) {
        // What the finder builds must parse, and must be within its length.
        EDIT_FORMAT_TYPE f;
        std::string message;
        if (!Parse_Edit_Format(fmt, f, message) || fmt.size() > kFindFMT_Max_Length) std::abort();
    } else if (!fmt.empty() || mess_findfmt.rfind("FindFMT: ", 0) != 0) {
        std::abort();
    }
    return 0;
}

#include "instrument/nrf_blocks.h"

#include <algorithm>

#include "instrument/fixed_columns.h"
#include "support/fixed_text.h"
#include "support/text_unit.h"

namespace hxl {

bool ERR_Nrf = false;
std::string ERR_Nrf_Mess;
bool nrf_header_only = false;
NRF_SCRATCH nrf;

void Clear_Nrf_Error() {
    ERR_Nrf = false;
    ERR_Nrf_Mess.clear();
}

void Set_Nrf_Error(const std::string& message) {
    ERR_Nrf = true;
    ERR_Nrf_Mess = Cut(message, 150);
}

namespace {

constexpr const char* kMarkers[kNumLetters] = {"RRRRRRRRRR", "AAAAAAAAAA", "SSSSSSSSSS", "FFFFFFFFFF",
                                                "IIIIIIIIII", "JJJJJJJJJJ", "VVVVVVVVVV"};
constexpr char kLetterChar[kNumLetters] = {'R', 'A', 'S', 'F', 'I', 'J', 'V'};

// A block cannot announce more values than this; larger headers are corrupt.
constexpr int kMaxBlockValues = 1 << 24;

std::size_t index_of(int letter, int k, int which) {
    return ((static_cast<std::size_t>(letter - 1) * static_cast<std::size_t>(nrf.max_count)) +
            static_cast<std::size_t>(k - 1)) * 2u + static_cast<std::size_t>(which - 1);
}

bool has_marker(const std::string& line, int letter) { return line.find(kMarkers[letter - 1]) != std::string::npos; }

const std::string& line_at(const NUMOR_LINES& lines, int i) {
    static const std::string empty;
    return (i >= 1 && i <= lines.size()) ? lines(i) : empty;
}

bool check_marker(const NUMOR_LINES& lines, int m, int letter) {
    if (m >= 1 && m <= lines.size() && has_marker(lines(m), letter)) return true;
    Set_Nrf_Error(std::string(" A bad Block ") + kLetterChar[letter - 1] + "-Type has been found");
    return false;
}

// The "(10I8)" header line that follows a marker.
bool read_header(const NUMOR_LINES& lines, int m, int (&h)[10], int letter) {
    if (!Read_Int_Fields(line_at(lines, m + 1), 8, 10, h)) {
        Set_Nrf_Error(std::string(" Bad header of Block ") + kLetterChar[letter - 1] + "-Type at line " +
                      std::to_string(m + 1));
        return false;
    }
    return true;
}

// Stores `count` lines from `from` as text; a line past `limit` fails with the
// block's message and keeps the lines read so far.
bool read_text(const NUMOR_LINES& lines, int from, int count, int limit, const char* message) {
    std::vector<std::string> got;
    bool ok = true;
    for (int i = 1; i <= count; ++i) {
        int l = from + i - 1;
        if (l > limit || l > lines.size()) {
            Set_Nrf_Error(message);
            ok = false;
            break;
        }
        got.push_back(Trim_Right(lines(l)));
    }
    nrf.n_text = static_cast<int>(got.size());
    nrf.text_lines.resize(nrf.n_text);
    for (int i = 1; i <= nrf.n_text; ++i) nrf.text_lines(i) = std::move(got[static_cast<std::size_t>(i - 1)]);
    return ok;
}

void clear_text() {
    nrf.text_lines.clear();
    nrf.n_text = 0;
}

bool count_ok(int n, int letter) {
    if (n <= kMaxBlockValues) return true;
    Set_Nrf_Error(std::string(" Too many values announced in Block ") + kLetterChar[letter - 1] + "-Type: " +
                  std::to_string(n));
    return false;
}

// Data lines of an F, I or J block: `per_line` values a line from the line
// after the text up to the block's end; the last line gives what is left.
template <class T, class Reader>
void read_values(const NUMOR_LINES& lines, int m, int e, int n_values, int per_line, Array1<T>& out,
                 Reader read_line, int letter) {
    int first = m + nrf.n_text + 2;
    if (e < first) return;
    int n_lines = (n_values + per_line - 1) / per_line;
    int last_count = n_values - per_line * (n_lines - 1);
    T buf[10];
    for (int l = first; l <= e; ++l) {
        long long base = static_cast<long long>(l - first) * per_line;
        if (base >= n_values) break;
        int take = (l == e) ? last_count : per_line;
        if (!read_line(line_at(lines, l), per_line, buf)) {
            Set_Nrf_Error(std::string(" Bad value in Block ") + kLetterChar[letter - 1] + "-Type at line " +
                          std::to_string(l));
            return;
        }
        for (int k = 0; k < take && base + k < n_values; ++k) out(static_cast<int>(base + k) + 1) = buf[k];
    }
}

}  // namespace

int Block_Start(int letter, int k) {
    if (letter < 1 || letter > kNumLetters || k < 1 || k > nrf.max_count) return 0;
    return nrf.block_index[index_of(letter, k, 1)];
}

int Block_End(int letter, int k) {
    if (letter < 1 || letter > kNumLetters || k < 1 || k > nrf.max_count) return 0;
    return nrf.block_index[index_of(letter, k, 2)];
}

void Read_Numor_Text(const std::string& text, NUMOR_LINES& lines, int& n) {
    Text_Unit unit;
    unit.Set_Text(text);
    std::vector<std::string> v;
    std::string_view line;
    while (unit.Read_Line(line)) v.emplace_back(line.substr(0, std::min<std::size_t>(line.size(), kNumorLineLen)));
    n = static_cast<int>(v.size());
    lines.resize(n);
    for (int i = 1; i <= n; ++i) lines(i) = std::move(v[static_cast<std::size_t>(i - 1)]);
}

void Read_Numor_Lines(const std::string& file, NUMOR_LINES& lines, int& n) {
    Text_Unit unit;
    n = 0;
    lines.clear();
    if (!unit.Open(file)) return;
    Read_Numor_Text(unit.Text(), lines, n);
}

int Marker_Letter(const std::string& line) {
    if (line.size() < 10) return 0;
    for (int l = 1; l <= kNumLetters; ++l)
        if (has_marker(line, l)) return l;
    return 0;
}

void Count_Block_Types(const NUMOR_LINES& lines, int n) {
    nrf.block_count.fill(0);
    n = std::min(n, lines.size());
    for (int i = 1; i <= n; ++i)
        if (int l = Marker_Letter(lines(i))) ++nrf.block_count[static_cast<std::size_t>(l - 1)];
}

void Index_Blocks(const NUMOR_LINES& lines, int n) {
    n = std::min(n, lines.size());
    nrf.max_count = *std::max_element(nrf.block_count.begin(), nrf.block_count.end());
    nrf.block_index.assign(static_cast<std::size_t>(kNumLetters) * static_cast<std::size_t>(nrf.max_count) * 2u, 0);
    if (nrf.max_count == 0) return;
    // Which markers each line holds, found once for all letters.
    std::vector<unsigned char> mask(static_cast<std::size_t>(n) + 1, 0);
    for (int i = 1; i <= n; ++i)
        if (lines(i).size() >= 10)
            for (int l = 1; l <= kNumLetters; ++l)
                if (has_marker(lines(i), l)) mask[static_cast<std::size_t>(i)] |= static_cast<unsigned char>(1u << (l - 1));
    for (int l = 1; l <= kNumLetters; ++l) {
        int count = nrf.block_count[static_cast<std::size_t>(l - 1)];
        if (count <= 0) continue;
        int k = 1;
        unsigned char own = static_cast<unsigned char>(1u << (l - 1));
        for (int i = 1; i <= n && k <= count; ++i) {
            unsigned char mk = mask[static_cast<std::size_t>(i)];
            int& start = nrf.block_index[index_of(l, k, 1)];
            if (start == 0) {
                if (mk & own) start = i;
            } else if (mk) {
                nrf.block_index[index_of(l, k, 2)] = i - 1;
                ++k;
                if (k <= count && (mk & own)) nrf.block_index[index_of(l, k, 1)] = i;
            }
        }
    }
    for (int l = 1; l <= kNumLetters; ++l) {
        int count = nrf.block_count[static_cast<std::size_t>(l - 1)];
        for (int k = 1; k <= count; ++k) {
            if (nrf.block_index[index_of(l, k, 1)] != 0 && nrf.block_index[index_of(l, k, 2)] == 0) {
                nrf.block_index[index_of(l, k, 2)] = n;
                break;
            }
        }
    }
}

void Read_R_Block(const NUMOR_LINES& lines, int start, int end, int& numor, int& third_value) {
    (void)end;
    numor = 0;
    third_value = 0;
    clear_text();
    if (!check_marker(lines, start, kBlockR)) return;
    int h[10];
    if (!read_header(lines, start, h, kBlockR)) return;
    numor = h[0];
    third_value = h[2];
    if (h[1] < 1) return;
    read_text(lines, start + 2, std::min(h[1], lines.size() + 1), lines.size(),
              "  Impossible to read a line for this block!");
}

void Read_A_Block(const NUMOR_LINES& lines, int start, int end, int& n_chars, std::string& text, std::size_t width) {
    text.clear();
    n_chars = 0;
    clear_text();
    if (!check_marker(lines, start, kBlockA)) return;
    int h[10];
    if (!read_header(lines, start, h, kBlockA)) return;
    n_chars = h[0];
    int n_text = std::max(0, std::min(h[1], lines.size() + 1));
    if (!read_text(lines, start + 3, n_text, end, " Impossible to read a line for this block!")) return;
    if (n_chars <= 0) return;
    // The packed text: the text so far, trimmed, then the full 80-column line and a line feed.
    int n_lines = std::min((n_chars + kNumorLineLen - 1) / kNumorLineLen, lines.size() + 1);
    int first = start + n_text + 2;
    for (int i = 0; i < n_lines; ++i) {
        int l = first + i;
        if (l < 1 || l > lines.size()) break;
        std::string full = lines(l);
        full.resize(kNumorLineLen, ' ');
        // Only blanks are trimmed: the line feeds of earlier lines stay.
        std::size_t keep = text.find_last_not_of(' ');
        text = Cut((keep == std::string::npos ? std::string() : text.substr(0, keep + 1)) + full + "\n", width);
    }
}

void Read_S_Block(const NUMOR_LINES& lines, int start, int end, std::array<int, 5>& values) {
    (void)end;
    values.fill(0);
    clear_text();
    if (!check_marker(lines, start, kBlockS)) return;
    int h[10];
    if (!read_header(lines, start, h, kBlockS)) return;
    values = {h[0], h[1], h[2], h[3], h[5]};
    read_text(lines, start + 2, std::max(0, std::min(h[4], lines.size() + 1)), lines.size(),
              " Impossible to read a line for this block!");
}

void Read_F_Block(const NUMOR_LINES& lines, int start, int end) {
    nrf.n_real = 0;
    nrf.real_values.clear();
    clear_text();
    if (!check_marker(lines, start, kBlockF)) return;
    int h[10];
    if (!read_header(lines, start, h, kBlockF)) return;
    if (!read_text(lines, start + 2, std::max(0, std::min(h[1], lines.size() + 1)), lines.size(),
                   " Impossible to read a line for this block!"))
        return;
    if (h[0] < 1 || !count_ok(h[0], kBlockF)) return;
    nrf.n_real = h[0];
    nrf.real_values.resize(nrf.n_real, 0.0f);
    read_values(lines, start, end, nrf.n_real, 5, nrf.real_values,
                [](std::string_view l, int c, float* o) { return Read_Real_Fields(l, 16, c, o); }, kBlockF);
}

namespace {
void read_int_block(const NUMOR_LINES& lines, int start, int end, int letter, int width, int per_line) {
    nrf.n_int = 0;
    nrf.int_values.clear();
    clear_text();
    if (!check_marker(lines, start, letter)) return;
    int h[10];
    if (!read_header(lines, start, h, letter)) return;
    if (!read_text(lines, start + 2, std::max(0, std::min(h[1], lines.size() + 1)), lines.size(),
                   " Impossible to read a line for this block!"))
        return;
    if (h[0] < 1 || !count_ok(h[0], letter)) return;
    nrf.n_int = h[0];
    nrf.int_values.resize(nrf.n_int, 0);
    read_values(lines, start, end, nrf.n_int, per_line, nrf.int_values,
                [width](std::string_view l, int c, int* o) { return Read_Int_Fields(l, width, c, o); }, letter);
}
}  // namespace

void Read_I_Block(const NUMOR_LINES& lines, int start, int end) { read_int_block(lines, start, end, kBlockI, 8, 10); }

void Read_J_Block(const NUMOR_LINES& lines, int start, int end) { read_int_block(lines, start, end, kBlockJ, 10, 8); }

void Read_V_Block(const NUMOR_LINES& lines, int start, int end) {
    clear_text();
    if (!check_marker(lines, start, kBlockV)) return;
    int last = std::min(end, lines.size());
    int count = std::max(0, last - start);
    nrf.text_lines.resize(count);
    for (int i = 1; i <= count; ++i) nrf.text_lines(i) = Trim_Right(lines(start + i));
    nrf.n_text = std::max(0, end - start - 1);
}

}  // namespace hxl

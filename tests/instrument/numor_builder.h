#pragma once
// Writes numor files block by block, in the fixed 80-column layout of the
// instruments: marker line, "(10I8)" header, text lines, data lines.
#include <cstdio>
#include <string>
#include <vector>

namespace ztest {

class Numor_Builder {
public:
    Numor_Builder& R(int numor, int third = 0, std::vector<std::string> text = {}) {
        marker('R');
        header({numor, static_cast<int>(text.size()), third});
        for (const auto& t : text) line(t);
        return *this;
    }
    // An A block with one text line: a descriptor line, then the text, which is also the packed text.
    Numor_Builder& A(const std::string& text, int n_chars = 80) {
        marker('A');
        header({n_chars, 1});
        line("Inst User L.C.   Date     Time");
        line(text);
        return *this;
    }
    // An A block whose packed text runs over several lines.
    Numor_Builder& A_Lines(const std::vector<std::string>& packed) {
        marker('A');
        header({static_cast<int>(packed.size()) * 80, 1});
        line("Title");
        for (const auto& t : packed) line(t);
        return *this;
    }
    Numor_Builder& S(int v1 = 1, int v2 = 0, int v3 = 0, int v4 = 0, int v6 = 0) {
        marker('S');
        header({v1, v2, v3, v4, 0, v6});
        return *this;
    }
    Numor_Builder& F(const std::vector<float>& v, int n_text = 0) {
        marker('F');
        header({static_cast<int>(v.size()), n_text});
        for (int i = 0; i < n_text; ++i) line("        descriptor text");
        for (std::size_t i = 0; i < v.size(); i += 5) {
            std::string l;
            for (std::size_t k = i; k < v.size() && k < i + 5; ++k) {
                char b[32];
                std::snprintf(b, sizeof b, "%16.8E", static_cast<double>(v[k]));
                l += b;
            }
            line(l);
        }
        return *this;
    }
    Numor_Builder& I(const std::vector<int>& v, int n_text = 0) { return ints('I', v, n_text, 8, 10); }
    Numor_Builder& J(const std::vector<int>& v) { return ints('J', v, 0, 10, 8); }
    Numor_Builder& Raw(const std::string& l) { return line(l); }
    const std::string& Text() const { return text_; }

private:
    Numor_Builder& line(const std::string& l) {
        std::string s = l.substr(0, 80);
        s.resize(80, ' ');
        text_ += s + "\n";
        return *this;
    }
    void marker(char c) { line(std::string(80, c)); }
    void header(std::vector<int> v) {
        std::string l;
        for (int x : v) {
            char b[16];
            std::snprintf(b, sizeof b, "%8d", x);
            l += b;
        }
        line(l);
    }
    Numor_Builder& ints(char c, const std::vector<int>& v, int n_text, int width, int per_line) {
        marker(c);
        header({static_cast<int>(v.size()), n_text});
        for (int i = 0; i < n_text; ++i) line("   nvers   ntype");
        for (std::size_t i = 0; i < v.size(); i += static_cast<std::size_t>(per_line)) {
            std::string l;
            for (std::size_t k = i; k < v.size() && k < i + static_cast<std::size_t>(per_line); ++k) {
                char b[16];
                std::snprintf(b, sizeof b, "%*d", width, v[k]);
                l += b;
            }
            line(l);
        }
        return *this;
    }
    std::string text_;
};

// A vector of n values, all zero but those given as (1-based index, value).
template <class T>
std::vector<T> Values(int n, std::initializer_list<std::pair<int, T>> set) {
    std::vector<T> v(static_cast<std::size_t>(n), T{});
    for (const auto& [i, x] : set) v[static_cast<std::size_t>(i - 1)] = x;
    return v;
}

}  // namespace ztest

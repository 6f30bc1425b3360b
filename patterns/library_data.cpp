#include "patterns/library_data.h"

#include <cstdint>
#include <cstring>

namespace hxl {
namespace {

class Writer {
public:
    void count(std::uint64_t n) { raw(&n, sizeof n); }
    void number(double v) { raw(&v, sizeof v); }
    void text(const std::string& s) {
        count(s.size());
        out_.append(s);
    }
    void numbers(const std::vector<double>& v) {
        count(v.size());
        raw(v.data(), v.size() * sizeof(double));
    }
    void meta(const Library_Meta& m) {
        count(m.size());
        for (const auto& [k, v] : m) {
            text(k);
            text(v);
        }
    }
    std::string take() { return std::move(out_); }

private:
    void raw(const void* p, std::size_t n) { out_.append(static_cast<const char*>(p), n); }
    std::string out_;
};

class Reader {
public:
    explicit Reader(const std::string& in) : in_(in) {}
    bool count(std::uint64_t& n) { return raw(&n, sizeof n); }
    bool number(double& v) { return raw(&v, sizeof v); }
    bool text(std::string& s) {
        std::uint64_t n = 0;
        if (!count(n) || n > left()) return false;
        s.assign(in_, at_, n);
        at_ += n;
        return true;
    }
    bool numbers(std::vector<double>& v) {
        std::uint64_t n = 0;
        if (!count(n) || n > left() / sizeof(double)) return false;
        v.resize(n);
        return raw(v.data(), n * sizeof(double));
    }
    bool meta(Library_Meta& m) {
        std::uint64_t n = 0;
        if (!count(n) || n > left()) return false;
        m.resize(n);
        for (auto& [k, v] : m)
            if (!text(k) || !text(v)) return false;
        return true;
    }
    bool integer(int& v) {
        std::uint64_t n = 0;
        if (!count(n) || n > 0x7fffffff) return false;
        v = static_cast<int>(n);
        return true;
    }
    bool at_end() const { return at_ == in_.size(); }

private:
    std::size_t left() const { return in_.size() - at_; }
    bool raw(void* p, std::size_t n) {
        if (n > left()) return false;
        if (n) std::memcpy(p, in_.data() + at_, n);
        at_ += n;
        return true;
    }
    const std::string& in_;
    std::size_t at_ = 0;
};

}  // namespace

std::string Encode_Library_Data(const Library_Data& data) {
    Writer w;
    w.text(data.format);
    w.count(static_cast<std::uint64_t>(data.block_count));
    w.count(static_cast<std::uint64_t>(data.left_out));
    w.meta(data.meta);
    w.count(data.blocks.size());
    for (const Library_Block& b : data.blocks) {
        w.count(static_cast<std::uint64_t>(b.index));
        w.text(b.name);
        w.text(b.x_name);
        w.number(b.x_step);
        w.text(b.sigma_name);
        w.numbers(b.x);
        w.numbers(b.y);
        w.numbers(b.sigma);
        w.meta(b.meta);
    }
    return w.take();
}

bool Decode_Library_Data(const std::string& bytes, Library_Data& data) {
    data = Library_Data{};
    Reader r(bytes);
    std::uint64_t nblocks = 0;
    if (!r.text(data.format) || !r.integer(data.block_count) || !r.integer(data.left_out) || !r.meta(data.meta) ||
        !r.count(nblocks) || nblocks > bytes.size())
        return false;
    data.blocks.resize(nblocks);
    for (Library_Block& b : data.blocks) {
        if (!r.integer(b.index) || !r.text(b.name) || !r.text(b.x_name) || !r.number(b.x_step) ||
            !r.text(b.sigma_name) || !r.numbers(b.x) || !r.numbers(b.y) || !r.numbers(b.sigma) || !r.meta(b.meta))
            return false;
        if (b.y.size() != b.x.size() || (!b.sigma.empty() && b.sigma.size() != b.x.size())) return false;
    }
    return r.at_end();
}

}  // namespace hxl

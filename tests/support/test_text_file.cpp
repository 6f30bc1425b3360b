// Text files as the editor reads and writes them: an unchanged text goes back
// as the same bytes, whatever its encoding and line ends; files that are not
// text, too large or missing are refused with a reason.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "support/text_file.h"

namespace fs = std::filesystem;

namespace {

struct TextFile : ::testing::Test {
    fs::path dir;
    void SetUp() override {
        dir = fs::temp_directory_path() / ("zd_text_file_" + std::to_string(::getpid()));
        fs::remove_all(dir);
        fs::create_directories(dir);
    }
    void TearDown() override {
        fs::permissions(dir, fs::perms::owner_all, fs::perm_options::add);
        fs::remove_all(dir);
    }
    std::string put(const std::string& name, const std::string& bytes) const {
        std::ofstream(dir / name, std::ios::binary) << bytes;
        return (dir / name).string();
    }
    static std::string get(const std::string& file) {
        std::ifstream in(file, std::ios::binary);
        std::stringstream s;
        s << in.rdbuf();
        return s.str();
    }
};

}  // namespace

TEST_F(TextFile, UnchangedTextGoesBackAsTheSameBytes) {
    struct CASE {
        const char* name;
        std::string bytes, text;
        bool latin1, bom, crlf;
    };
    const CASE cases[] = {
        {"lf", "a 1\nb 2\n", "a 1\nb 2\n", false, false, false},
        {"no_last_end", "a 1\nb 2", "a 1\nb 2", false, false, false},
        {"empty", "", "", false, false, false},
        {"crlf", "a\r\nb\r\n\r\nc", "a\nb\n\nc", false, false, true},
        {"bom", "\xEF\xBB\xBF" "2\xCE\xB8\n", "2\xCE\xB8\n", false, true, false},
        // Latin-1: a no-break space, "å", "°"
        {"latin1", "T=20\xA0\xB0" "C\r\nn\xE5\r\n", "T=20\xC2\xA0\xC2\xB0" "C\nn\xC3\xA5\n", true, false, true},
    };
    for (const CASE& c : cases) {
        SCOPED_TRACE(c.name);
        const std::string f = put(c.name, c.bytes);
        hxl::TEXT_FILE_TYPE t;
        std::string message, bytes;
        ASSERT_TRUE(hxl::Read_Text_File(f, hxl::kTextFileLimit, t, message)) << message;
        EXPECT_EQ(t.text, c.text);
        EXPECT_EQ(t.latin1, c.latin1);
        EXPECT_EQ(t.bom, c.bom);
        EXPECT_EQ(t.crlf, c.crlf);
        EXPECT_FALSE(t.mixed);
        ASSERT_TRUE(hxl::Text_File_Bytes(t, t.text, bytes, message)) << message;
        EXPECT_EQ(bytes, c.bytes);
        ASSERT_TRUE(hxl::Replace_File_Told(f, bytes, message)) << message;
        EXPECT_EQ(get(f), c.bytes);
    }
}

// Line ends of mixed kinds are read as line ends and written back all of the most frequent kind.
TEST_F(TextFile, MixedLineEndsBecomeAlike) {
    struct CASE {
        std::string bytes, text, written;
        bool crlf;
    };
    const CASE cases[] = {
        {"a\r\nb\nc\rd\n", "a\nb\nc\nd\n", "a\nb\nc\nd\n", false},
        {"a\r\nb\r\nc\n", "a\nb\nc\n", "a\r\nb\r\nc\r\n", true},
        {"a\rb\r", "a\nb\n", "a\nb\n", false},  // CR alone
    };
    for (const CASE& c : cases) {
        SCOPED_TRACE(c.bytes);
        hxl::TEXT_FILE_TYPE t;
        std::string message, bytes;
        ASSERT_TRUE(hxl::Read_Text_File(put("m", c.bytes), hxl::kTextFileLimit, t, message)) << message;
        EXPECT_EQ(t.text, c.text);
        EXPECT_TRUE(t.mixed);
        EXPECT_EQ(t.crlf, c.crlf);
        ASSERT_TRUE(hxl::Text_File_Bytes(t, t.text, bytes, message));
        EXPECT_EQ(bytes, c.written);
    }
}

TEST_F(TextFile, EditedTextKeepsTheFormOrIsRefused) {
    hxl::TEXT_FILE_TYPE t;
    std::string message, bytes;
    ASSERT_TRUE(hxl::Read_Text_File(put("l", "x\xB0\r\n"), hxl::kTextFileLimit, t, message));
    // new lines get CR LF, a Latin-1 letter its one byte
    ASSERT_TRUE(hxl::Text_File_Bytes(t, t.text + "\xC3\xBF y\n", bytes, message));
    EXPECT_EQ(bytes, "x\xB0\r\n\xFF y\r\n");
    // theta has no Latin-1 byte: refused, naming the line
    EXPECT_FALSE(hxl::Text_File_Bytes(t, t.text + "ok\n2\xCE\xB8\n", bytes, message));
    EXPECT_NE(message.find("Line 3 "), std::string::npos) << message;
    EXPECT_NE(message.find("Latin-1"), std::string::npos) << message;
    // the same text in a UTF-8 file is written as it stands
    hxl::TEXT_FILE_TYPE u;
    ASSERT_TRUE(hxl::Text_File_Bytes(u, "2\xCE\xB8\n", bytes, message));
    EXPECT_EQ(bytes, "2\xCE\xB8\n");
}

TEST_F(TextFile, FilesThatAreNotTextAreRefused) {
    hxl::TEXT_FILE_TYPE t;
    t.text = "kept";
    std::string message;
    EXPECT_FALSE(hxl::Read_Text_File((dir / "none.pcr").string(), hxl::kTextFileLimit, t, message));
    EXPECT_EQ(message, "The file " + (dir / "none.pcr").string() + " does not exist");
    EXPECT_FALSE(hxl::Read_Text_File(dir.string(), hxl::kTextFileLimit, t, message));
    EXPECT_EQ(message, dir.string() + " is not a file");
    const std::string bin = put("b.raw", std::string("ab\0cd", 5));
    EXPECT_FALSE(hxl::Read_Text_File(bin, hxl::kTextFileLimit, t, message));
    EXPECT_EQ(message, "The file " + bin + " is not a text file: it is not opened");
    // the limit: at it the file opens, one byte past it it does not
    const std::string big = put("big.txt", std::string(3 * 1024 * 1024, 'x'));
    EXPECT_TRUE(hxl::Read_Text_File(big, 3 * 1024 * 1024, t, message));
    t.text = "kept";
    EXPECT_FALSE(hxl::Read_Text_File(big, 3 * 1024 * 1024 - 1, t, message));
    EXPECT_EQ(message, "The file " + big + " is larger than 3145727 bytes: it is not opened");
    EXPECT_EQ(t.text, "kept");  // a refusal leaves the record alone
    EXPECT_EQ(hxl::kTextFileLimit, 50LL * 1024 * 1024);
}

TEST_F(TextFile, Utf8AtItsEdges) {
    EXPECT_TRUE(hxl::Is_Utf8("plain"));
    EXPECT_TRUE(hxl::Is_Utf8("\xF0\x9F\x98\x80"));   // U+1F600
    EXPECT_TRUE(hxl::Is_Utf8("\xF4\x8F\xBF\xBF"));   // U+10FFFF, the last
    EXPECT_FALSE(hxl::Is_Utf8("\xF4\x90\x80\x80"));  // past it
    EXPECT_FALSE(hxl::Is_Utf8("\xC0\xAF"));          // overlong "/"
    EXPECT_FALSE(hxl::Is_Utf8("\xED\xA0\x80"));      // a surrogate
    EXPECT_FALSE(hxl::Is_Utf8("ok\xE2\x82"));        // cut short at the end
    EXPECT_FALSE(hxl::Is_Utf8("\xB0"));              // a lone continuation byte
}

TEST_F(TextFile, ReplaceKeepsPermissionsAndFailsCleanly) {
    const std::string f = put("run.sh", "old\n");
    ::chmod(f.c_str(), 0750);
    std::string message;
    ASSERT_TRUE(hxl::Replace_File_Told(f, "new\n", message)) << message;
    EXPECT_EQ(get(f), "new\n");
    struct stat st {};
    ASSERT_EQ(::stat(f.c_str(), &st), 0);
    EXPECT_EQ(st.st_mode & 07777, 0750u);
    // a folder that is not there: nothing is written and the reason is given
    const std::string lost = (dir / "no_dir" / "x.pcr").string();
    EXPECT_FALSE(hxl::Replace_File_Told(lost, "x", message));
    EXPECT_EQ(message, "Unable to save " + lost + ": No such file or directory");
    // no temporary file is left beside the saved one
    int files = 0;
    for (const auto& e : fs::directory_iterator(dir)) files += e.is_regular_file() ? 1 : 0;
    EXPECT_EQ(files, 1);
}

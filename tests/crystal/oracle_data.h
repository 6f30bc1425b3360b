#pragma once
// Reader of the reference tables written by tests/tools/gen_spacegroup_oracle.py.
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

struct ORACLE_SETTING {
    int number = 0;
    std::string xhm, hall, centring, laue, point_group;
    bool centric = false;
    std::vector<std::string> ops;
    std::string refl;  // '.' absent, else '0' + multiplicity; h, k, l from -6 to 6
};

inline std::vector<ORACLE_SETTING> Read_Oracle_Settings(const std::string& path) {
    std::vector<ORACLE_SETTING> out;
    std::ifstream in(path);
    std::string line;
    while (std::getline(in, line)) {
        if (line.size() < 2) continue;
        const std::string rest = line.substr(2);
        switch (line[0]) {
            case 'S': {
                out.emplace_back();
                const auto sp = rest.find(' ');
                out.back().number = std::stoi(rest.substr(0, sp));
                out.back().xhm = rest.substr(sp + 1);
                break;
            }
            case 'H': out.back().hall = rest; break;
            case 'D': {
                std::istringstream d(rest);
                std::string c;
                d >> out.back().centring >> out.back().laue >> out.back().point_group >> c;
                out.back().centric = c == "C";
                break;
            }
            case 'O': {
                std::istringstream o(rest);
                for (std::string op; std::getline(o, op, ';');) out.back().ops.push_back(op);
                break;
            }
            case 'R': out.back().refl = rest; break;
            default: break;
        }
    }
    return out;
}

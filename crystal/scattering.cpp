#include "crystal/scattering.h"

#include "crystal/ion_f0_table.h"

#include <cctype>
#include <cmath>
#include <cstdlib>
#include <string>

#include <gemmi/elem.hpp>
#include <gemmi/it92.hpp>
#include <gemmi/neutron92.hpp>

namespace hxl {

namespace {

struct ISOTOPE_ROW {
    const char* element;
    int mass;
    double b_fm;  // real part of the bound coherent length
};

// The isotopes used for contrast, from python3-periodictable 1.6.0 (Sears, Neutron News 3(3)
// 1992, with the later evaluations of the Atominstitut compilation); written by
// tools/isotope_lengths.py.
const ISOTOPE_ROW kIsotopes[] = {
    {"H", 1, -3.7423}, {"H", 2, 6.674}, {"H", 3, 4.792}, {"He", 3, 5.74}, {"He", 4, 3.26},
    {"Li", 6, 2.0}, {"Li", 7, -2.22}, {"B", 10, -0.2}, {"B", 11, 6.65}, {"C", 12, 6.6535},
    {"C", 13, 6.19}, {"N", 14, 9.37}, {"N", 15, 6.44}, {"O", 16, 5.805}, {"O", 17, 5.6},
    {"O", 18, 5.84}, {"Si", 28, 4.106}, {"Si", 29, 4.7}, {"Si", 30, 4.58}, {"Cl", 35, 11.7},
    {"Cl", 37, 3.08}, {"Ar", 36, 24.9}, {"Ti", 48, -5.86}, {"Fe", 54, 4.2}, {"Fe", 56, 10.1},
    {"Fe", 57, 2.3}, {"Ni", 58, 14.4}, {"Ni", 60, 2.8}, {"Ni", 61, 7.6}, {"Ni", 62, -8.7},
    {"Ni", 64, -0.37}, {"Cu", 63, 6.477}, {"Cu", 65, 10.204},
};

// The ion's own five Gaussians when the table has it, in its spelling "Fe3+".
void Take_Ion_F0(SCATTERER_TYPE& s) {
    const std::string name = s.element + std::to_string(std::abs(s.charge)) + (s.charge > 0 ? "+" : "-");
    for (int r = 0; r < kIonF0Count; ++r)
        if (name == kIonF0[r].ion) {
            for (int k = 0; k < 5; ++k) s.a[k] = kIonF0[r].a[k], s.b[k] = kIonF0[r].b[k];
            s.c = kIonF0[r].c;
            s.ion_f0 = true;
            return;
        }
}

}  // namespace

bool Find_Scatterer(const std::string& type, SCATTERER_TYPE& s, std::string& message) {
    s = SCATTERER_TYPE{};
    std::size_t i = 0;
    const std::size_t n = type.size();
    while (i < n && std::isspace(static_cast<unsigned char>(type[i]))) ++i;
    int mass = 0;
    while (i < n && std::isdigit(static_cast<unsigned char>(type[i])) && mass < 1000) mass = mass * 10 + (type[i++] - '0');
    std::string sym;
    while (i < n && std::isalpha(static_cast<unsigned char>(type[i])) && sym.size() < 3) sym += type[i++];
    if (sym.empty()) {
        message = "\"" + type + "\" names no element";
        return false;
    }
    // Two letters when they form an element ("Fe"), else one ("O1", "Os" stays "Os").
    gemmi::El el = gemmi::El::X;
    std::string name;
    if (sym.size() >= 2) {
        name = {static_cast<char>(std::toupper(sym[0])), static_cast<char>(std::tolower(sym[1]))};
        el = gemmi::find_element(name.c_str());
    }
    if (el == gemmi::El::X) {
        name = std::string(1, static_cast<char>(std::toupper(sym[0])));
        el = gemmi::find_element(name.c_str());
        i -= sym.size() - 1;
    } else {
        i -= sym.size() - 2;
    }
    if (el == gemmi::El::X) {
        message = "\"" + type + "\" names no element";
        return false;
    }
    // What follows: a charge ("3+", "+3", "2-", "-") or an isotope mass ("Li7").
    std::string rest = type.substr(i);
    while (!rest.empty() && std::isspace(static_cast<unsigned char>(rest.back()))) rest.pop_back();
    int digits = 0, sign = 0;
    std::size_t j = 0;
    if (j < rest.size() && (rest[j] == '+' || rest[j] == '-')) sign = rest[j++] == '+' ? 1 : -1;
    while (j < rest.size() && std::isdigit(static_cast<unsigned char>(rest[j])) && digits < 1000)
        digits = digits * 10 + (rest[j++] - '0');
    if (!sign && j < rest.size() && (rest[j] == '+' || rest[j] == '-')) sign = rest[j++] == '+' ? 1 : -1;
    if (sign) {
        s.charge = sign * (digits ? digits : 1);
        if (std::abs(s.charge) > 8) {
            message = "\"" + type + "\": charge " + std::to_string(s.charge) + " is not an ion's";
            return false;
        }
    }
    s.element = gemmi::element_name(el);
    s.z = gemmi::Element(el).atomic_number();
    if (el == gemmi::El::D) {
        s.element = "H";
        s.z = 1;
        mass = 2;
    }
    s.mass = mass;
    const gemmi::El natural = gemmi::find_element(s.element.c_str());
    if (gemmi::IT92<double>::has(natural) && static_cast<int>(natural) < 99) {
        const auto& co = gemmi::IT92<double>::get(natural);
        for (int k = 0; k < 4; ++k) {
            s.a[k] = co.a(k);
            s.b[k] = co.b(k);
        }
        s.c = co.c();
        s.has_xray = true;
        if (s.charge != 0) Take_Ion_F0(s);
    }
    if (mass == 0) {
        s.b_fm = gemmi::Neutron92<double>::get_(natural);
        s.has_neutron = gemmi::Neutron92<double>::has(natural);
    } else {
        for (const ISOTOPE_ROW& r : kIsotopes)
            if (s.element == r.element && r.mass == mass) {
                s.b_fm = r.b_fm;
                s.has_neutron = true;
            }
        if (!s.has_neutron) {
            message = "\"" + type + "\": no scattering length of the isotope " + std::to_string(mass) + s.element +
                      " in the table";
            return false;
        }
    }
    return true;
}

double Xray_F0(const SCATTERER_TYPE& s, double stl) {
    const double s2 = stl * stl;
    double f = s.c;
    for (int k = 0; k < 5; ++k) f += s.a[k] * std::exp(-s.b[k] * s2);
    return f;
}

}  // namespace hxl

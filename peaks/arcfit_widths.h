#pragma once
// The Gaussian and Lorentzian widths behind a pseudo-Voigt of FWHM H and
// mixing eta.
namespace hxl {

// HL/H is the root q in (0, 1) of eta = 1.36603 q - 0.47719 q^2 + 0.11116 q^3,
// and HG the root of H^5 = HG^5 + 2.69269 HG^4 HL + 2.42843 HG^3 HL^2
// + 4.47163 HG^2 HL^3 + 0.07842 HG HL^4 + HL^5. eta <= 0 gives (H, 0), eta >= 1
// gives (0, H). False when no width can be given (H not a positive number).
bool Split_Widths(float h, float eta, float& hg, float& hl);

}  // namespace hxl

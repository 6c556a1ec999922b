// Numbers of the labels and panels of a card form, as its template has them. Those of the numbers
// are the field's own and 2000 more.
#pragma once

namespace carnetel::desktop {

inline constexpr int kLabelPerson = 2015;
inline constexpr int kLabelCompany = 2016;
inline constexpr int kLabelComposed = 2019;
inline constexpr int kLabelAddress = 2006;
inline constexpr int kLabelCode = 2008;
inline constexpr int kLabelTitle = 2012;
inline constexpr int kLabelFirstName = 2013;
inline constexpr int kPanelCompany = 2003;
inline constexpr int kPanelPerson = 2004;

}  // namespace carnetel::desktop

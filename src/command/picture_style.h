// The colours and fonts of the picture of the morning, light and dark.
//
// Rings have colours that colour-blind people tell apart, after Okabe and Ito; texts have a contrast of 4.5 and more to
// their card, rings of 3. Every rule is of this picture alone, since pages may hold it beside others. Colours stand in
// each rule: some viewers know no variables, and those that know no preference show the light ones.

#pragma once

namespace lunabrook {

inline constexpr const char* kRingInks[] = {"r1", "r2", "r3", "r4"};  // from the outermost
inline constexpr const char* kLapInks[] = {"l1", "l2", "l3", "l4"};

inline constexpr const char* kPictureStyle = R"(
.lunabrook text{font-family:system-ui,-apple-system,'Segoe UI',Roboto,'Noto Sans',sans-serif;fill:#1b1f27}
.lunabrook .day,.lunabrook .title,.lunabrook .value{font-weight:600}
.lunabrook .figure{font-weight:700}
.lunabrook .rise,.lunabrook .fall{font-weight:600}
.lunabrook tspan{font-weight:400}
.lunabrook .title,.lunabrook .quiet{fill:#596273}
.lunabrook .page{fill:#f1f3f7}
.lunabrook .card{fill:#fff}
.lunabrook .rule{stroke:#e2e6ec}
.lunabrook .good{fill:#00694c}
.lunabrook .bad{fill:#a84300}
.lunabrook .rise{fill:#a84300}
.lunabrook .fall{fill:#00629a}
.lunabrook .sign{fill:none;stroke:#fff;stroke-width:1.8;stroke-linecap:round;stroke-linejoin:round}
.lunabrook .star{fill:#a86f00}
.lunabrook .empty{fill:#dfe3ea}
.lunabrook .track,.lunabrook .lap{fill:none;stroke:currentColor;stroke-linecap:round}
.lunabrook .track{stroke-opacity:.16}
.lunabrook .dot,.lunabrook .over,.lunabrook .under{fill:currentColor}
.lunabrook .under{fill-opacity:.16}
.lunabrook .r1{color:#0072b2}
.lunabrook .r2{color:#c46a9a}
.lunabrook .r3{color:#009e73}
.lunabrook .r4{color:#d55e00}
.lunabrook .l1{color:#00436a}
.lunabrook .l2{color:#85336a}
.lunabrook .l3{color:#005c43}
.lunabrook .l4{color:#803700}
@media (prefers-color-scheme:dark){
.lunabrook text{fill:#f0f3f7}
.lunabrook .title,.lunabrook .quiet{fill:#a7b1be}
.lunabrook .page{fill:#0e1116}
.lunabrook .card{fill:#191e25}
.lunabrook .rule{stroke:#2c333d}
.lunabrook .good{fill:#4fd1a5}
.lunabrook .bad,.lunabrook .rise{fill:#ff9d66}
.lunabrook .fall{fill:#7cc4f2}
.lunabrook .sign{fill:none;stroke:#191e25}
.lunabrook .star{fill:#f0c14b}
.lunabrook .empty{fill:#39414d}
.lunabrook .r1{color:#4aa8e0}
.lunabrook .r2{color:#d987b4}
.lunabrook .r3{color:#1fb98c}
.lunabrook .r4{color:#ee7a26}
.lunabrook .l1{color:#b4defa}
.lunabrook .l2{color:#f6d3e5}
.lunabrook .l3{color:#96ecd1}
.lunabrook .l4{color:#ffc79a}
}
)";

}  // namespace lunabrook

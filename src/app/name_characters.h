#pragma once
// Characters that Chinese commonly uses to write foreign names by sound (乔纳森, Jonathan), in
// simplified form; a traditional character is tested through its simplified form. A run of two or
// more of them that the dictionary does not know is read as a probable proper name.
// Constant data.

#include <string_view>

namespace vesko::chinese {

// clang-format off
inline constexpr std::u16string_view kNameCharacters =
    u"阿埃艾爱安奥巴拜班邦贝本比波伯布查达戴丹德迪蒂丁顿多厄恩尔法菲费芬弗福盖格古哈海汉赫亨霍基吉"
    u"加杰金卡凯科克库拉莱兰朗劳勒雷黎里利林琳隆卢鲁路伦罗洛马迈曼梅蒙米明莫默姆穆纳奈内尼纽诺欧"
    u"帕佩皮普奇齐乔切琼萨塞森沙舍圣施斯索塔泰坦特提汀图托瓦万威韦维温沃乌西希夏谢休雅亚扬耶伊因"
    u"英尤约泽扎詹";
// clang-format on

// A name longer than this is more likely a run of unrelated characters.
inline constexpr std::size_t kMaxNameLength = 8;

}  // namespace vesko::chinese

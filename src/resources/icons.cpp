#include "resources/icons.h"

#include <algorithm>

namespace vorn {

namespace {

// All icons share these: a dark line, paper, and one or two of the others.
constexpr Colour Ink = rgb(0x33, 0x3D, 0x48);
constexpr Colour Faint = rgb(0x9A, 0xA5, 0xB1);
constexpr Colour Paper = rgb(0xFF, 0xFF, 0xFF);
constexpr Colour Blue = rgb(0x1F, 0x6F, 0xC4);
constexpr Colour LightBlue = rgb(0xC6, 0xDF, 0xF7);
constexpr Colour Gold = rgb(0xF2, 0xB9, 0x3B);
constexpr Colour LightGold = rgb(0xFB, 0xDE, 0x91);
constexpr Colour Green = rgb(0x2C, 0x96, 0x4B);
constexpr Colour Red = rgb(0xCC, 0x3A, 0x2E);

constexpr IconPart Undo[] = {
    {NoColour, Blue,     2, "M 5 6 L 9 6 C 12 6 14 7.5 14 10 C 14 12.5 12.5 14 10.5 14"},
    {Blue,     NoColour, 0, "M 0.5 6 L 6 1 L 6 11 Z"                                   },
};

constexpr IconPart Cut[] = {
    {NoColour, Ink,  2, "M 5 2 L 10 11"     },
    {NoColour, Ink,  2, "M 11 2 L 6 11"     },
    {Paper,    Blue, 2, "O 4.25 12.25 2.25" },
    {Paper,    Blue, 2, "O 11.75 12.25 2.25"},
};

constexpr IconPart Copy[] = {
    {Paper,    Ink,  1, "M 1.5 1.5 L 9.5 1.5 L 9.5 11.5 L 1.5 11.5 Z"  },
    {NoColour, Blue, 1, "M 3.5 4.5 L 5.5 4.5"                          },
    {NoColour, Blue, 1, "M 3.5 6.5 L 5.5 6.5"                          },
    {Paper,    Ink,  1, "M 6.5 4.5 L 14.5 4.5 L 14.5 14.5 L 6.5 14.5 Z"},
    {NoColour, Blue, 1, "M 8.5 7.5 L 12.5 7.5"                         },
    {NoColour, Blue, 1, "M 8.5 9.5 L 12.5 9.5"                         },
    {NoColour, Blue, 1, "M 8.5 11.5 L 10.5 11.5"                       },
};

constexpr IconPart Paste[] = {
    {Gold,      Ink,  1, "M 1.5 2.5 L 11.5 2.5 L 11.5 14.5 L 1.5 14.5 Z"},
    {LightBlue, Ink,  1, "M 4.5 1.5 L 8.5 1.5 L 8.5 4.5 L 4.5 4.5 Z"    },
    {Paper,     Ink,  1, "M 6.5 6.5 L 14.5 6.5 L 14.5 15.5 L 6.5 15.5 Z"},
    {NoColour,  Blue, 1, "M 8.5 9.5 L 12.5 9.5"                         },
    {NoColour,  Blue, 1, "M 8.5 11.5 L 12.5 11.5"                       },
    {NoColour,  Blue, 1, "M 8.5 13.5 L 10.5 13.5"                       },
};

constexpr IconPart AutoSum[] = {
    {NoColour, Ink, 2, "M 12 4 L 12 3 L 4 3 L 9 8 L 4 13 L 12 13 L 12 12"},
};

constexpr IconPart Chart[] = {
    {Blue,     NoColour, 0, "M 3 9 L 6 9 L 6 14 L 3 14 Z"     },
    {Gold,     NoColour, 0, "M 7 3 L 10 3 L 10 14 L 7 14 Z"   },
    {Green,    NoColour, 0, "M 11 6 L 14 6 L 14 14 L 11 14 Z" },
    {NoColour, Ink,      1, "M 1.5 1.5 L 1.5 14.5 L 15.5 14.5"},
};

constexpr IconPart Bold[] = {
    {Ink, NoColour, 0,
     "M 3 2 L 9 2 C 11.5 2 12.5 3.4 12.5 5 C 12.5 6.4 11.8 7.3 10.7 7.7 "
     "C 12.2 8 13 9.1 13 10.6 C 13 12.8 11.5 14 9 14 L 3 14 Z "
     "M 6 4 L 6 7 L 8.2 7 C 9.3 7 9.8 6.4 9.8 5.5 C 9.8 4.5 9.2 4 8.2 4 Z "
     "M 6 9 L 6 12 L 8.6 12 C 9.7 12 10.2 11.4 10.2 10.5 C 10.2 9.5 9.6 9 8.6 9 Z"},
};

constexpr IconPart Italic[] = {
    {Ink, NoColour, 0,
     "M 7 2 L 13 2 L 13 4 L 11 4 L 8.5 12 L 10 12 L 10 14 L 4 14 L 4 12 L 6 12 L 8.5 4 L 7 4 Z"},
};

constexpr IconPart Underline[] = {
    {NoColour, Ink,      2, "M 4 2 L 4 7 C 4 10 5.5 11 8 11 C 10.5 11 12 10 12 7 L 12 2"},
    {Ink,      NoColour, 0, "M 3 14 L 13 14 L 13 15 L 3 15 Z"                           },
};

constexpr IconPart New[] = {
    {Paper,     Ink, 1, "M 2.5 1.5 L 9.5 1.5 L 13.5 5.5 L 13.5 14.5 L 2.5 14.5 Z"},
    {LightBlue, Ink, 1, "M 9.5 1.5 L 9.5 5.5 L 13.5 5.5 Z"                       },
};

constexpr IconPart Open[] = {
    {Gold,      Ink, 1, "M 1.5 13.5 L 1.5 2.5 L 6.5 2.5 L 7.5 4.5 L 11.5 4.5 L 11.5 13.5 Z"},
    {LightGold, Ink, 1, "M 1.5 13.5 L 4.5 7.5 L 14.5 7.5 L 11.5 13.5 Z"                    },
};

constexpr IconPart Save[] = {
    {Blue,  Ink,      1, "M 1.5 1.5 L 12.5 1.5 L 14.5 3.5 L 14.5 14.5 L 1.5 14.5 Z"},
    {Paper, NoColour, 0, "M 4 2 L 11 2 L 11 6 L 4 6 Z"                             },
    {Ink,   NoColour, 0, "M 8 3 L 10 3 L 10 5 L 8 5 Z"                             },
    {Paper, NoColour, 0, "M 4 9 L 12 9 L 12 14 L 4 14 Z"                           },
    {Faint, NoColour, 0, "M 5 10 L 11 10 L 11 11 L 5 11 Z"                         },
    {Faint, NoColour, 0, "M 5 12 L 11 12 L 11 13 L 5 13 Z"                         },
};

constexpr IconPart AlignLeft[] = {
    {NoColour, Ink,  1, "M 2.5 2.5 L 13.5 2.5"  },
    {NoColour, Blue, 1, "M 2.5 5.5 L 8.5 5.5"   },
    {NoColour, Ink,  1, "M 2.5 8.5 L 13.5 8.5"  },
    {NoColour, Blue, 1, "M 2.5 11.5 L 8.5 11.5" },
    {NoColour, Ink,  1, "M 2.5 14.5 L 11.5 14.5"},
};

constexpr IconPart AlignCenter[] = {
    {NoColour, Ink,  1, "M 2.5 2.5 L 13.5 2.5"  },
    {NoColour, Blue, 1, "M 5.5 5.5 L 10.5 5.5"  },
    {NoColour, Ink,  1, "M 2.5 8.5 L 13.5 8.5"  },
    {NoColour, Blue, 1, "M 5.5 11.5 L 10.5 11.5"},
    {NoColour, Ink,  1, "M 3.5 14.5 L 12.5 14.5"},
};

constexpr IconPart AlignRight[] = {
    {NoColour, Ink,  1, "M 2.5 2.5 L 13.5 2.5"  },
    {NoColour, Blue, 1, "M 7.5 5.5 L 13.5 5.5"  },
    {NoColour, Ink,  1, "M 2.5 8.5 L 13.5 8.5"  },
    {NoColour, Blue, 1, "M 7.5 11.5 L 13.5 11.5"},
    {NoColour, Ink,  1, "M 4.5 14.5 L 13.5 14.5"},
};

constexpr IconPart Find[] = {
    {NoColour,  Ink, 2, "M 11 11 L 13 13"},
    {LightBlue, Ink, 1, "O 6.5 6.5 5"    },
};

constexpr IconPart Sort[] = {
    {NoColour, Ink,      1, "M 1.5 7.5 L 1.5 4.5 L 3.5 1.5 L 4.5 1.5 L 6.5 4.5 L 6.5 7.5"},
    {NoColour, Ink,      1, "M 2.5 5.5 L 5.5 5.5"                                        },
    {NoColour, Ink,      1, "M 1.5 9.5 L 6.5 9.5 L 1.5 14.5 L 6.5 14.5"                  },
    {NoColour, Blue,     2, "M 12 2 L 12 10"                                             },
    {Blue,     NoColour, 0, "M 8.5 10 L 15.5 10 L 12 15 Z"                               },
};

constexpr IconPart Format[] = {
    {Paper,     Ink,      1, "M 1.5 1.5 L 14.5 1.5 L 14.5 12.5 L 1.5 12.5 Z"           },
    {LightBlue, NoColour, 0, "M 2 2 L 14 2 L 14 5 L 2 5 Z"                             },
    {NoColour,  Ink,      1, "M 2.5 5.5 L 13.5 5.5"                                    },
    {NoColour,  Faint,    1, "M 2.5 8.5 L 13.5 8.5"                                    },
    {NoColour,  Faint,    1, "M 5.5 6.5 L 5.5 11.5"                                    },
    {NoColour,  Faint,    1, "M 9.5 6.5 L 9.5 11.5"                                    },
    {Gold,      Ink,      1, "M 12.5 5.5 L 14.5 7.5 L 8.5 13.5 L 5.5 14.5 L 6.5 11.5 Z"},
};

constexpr IconPart FullScreen[] = {
    {LightBlue, Ink,  1, "M 4.5 4.5 L 11.5 4.5 L 11.5 11.5 L 4.5 11.5 Z"},
    {NoColour,  Blue, 2, "M 2 5 L 2 2 L 5 2"                            },
    {NoColour,  Blue, 2, "M 11 2 L 14 2 L 14 5"                         },
    {NoColour,  Blue, 2, "M 14 11 L 14 14 L 11 14"                      },
    {NoColour,  Blue, 2, "M 5 14 L 2 14 L 2 11"                         },
};

constexpr IconPart Commit[] = {
    {NoColour, Green, 2, "M 3 9 L 6 12 L 13 4"},
};

constexpr IconPart Cancel[] = {
    {NoColour, Red, 2, "M 4 4 L 12 12"},
    {NoColour, Red, 2, "M 12 4 L 4 12"},
};

constexpr IconPart QuickEntry[] = {
    {Blue, NoColour, 0, "M 3 3 L 13 3 L 13 5 L 3 5 Z"},
    {Ink,  NoColour, 0, "M 2 7 L 14 7 L 8 14 Z"      },
};

constexpr IconPart Function[] = {
    {NoColour, Ink,  2, "M 9 3 C 6.5 1.8 6 3.5 5.6 6 L 4.8 11 C 4.3 14 3.5 14.3 2.2 13.7"},
    {NoColour, Ink,  2, "M 4 7 L 7 7"                                                    },
    {NoColour, Blue, 2, "M 10 10 L 13 13"                                                },
    {NoColour, Blue, 2, "M 13 10 L 10 13"                                                },
};

constexpr IconPart Vorn[] = {
    {Paper,     NoColour, 0, "M 1 1 L 15 1 L 15 15 L 1 15 Z"                },
    {LightBlue, NoColour, 0, "M 1 1 L 15 1 L 15 4 L 1 4 Z"                  },
    {LightBlue, NoColour, 0, "M 1 4 L 4 4 L 4 15 L 1 15 Z"                  },
    {NoColour,  Faint,    1, "M 1.5 4.5 L 14.5 4.5"                         },
    {NoColour,  Faint,    1, "M 1.5 9.5 L 14.5 9.5"                         },
    {NoColour,  Faint,    1, "M 4.5 1.5 L 4.5 14.5"                         },
    {NoColour,  Faint,    1, "M 10.5 1.5 L 10.5 14.5"                       },
    {NoColour,  Ink,      1, "M 0.5 0.5 L 15.5 0.5 L 15.5 15.5 L 0.5 15.5 Z"},
    {Blue,      NoColour, 0,
     "M 2 3 L 5.5 3 L 8.5 10 C 9.5 6.5 11 3.5 15 1 L 14.5 3.5 "
     "C 12 6 10.5 9.5 9.5 14 L 7 14 Z"                                      },
};

constexpr IconDrawing drawings[] = {
    {IconUndo,        Undo       },
    {IconCut,         Cut        },
    {IconCopy,        Copy       },
    {IconPaste,       Paste      },
    {IconAutoSum,     AutoSum    },
    {IconChart,       Chart      },
    {IconBold,        Bold       },
    {IconItalic,      Italic     },
    {IconUnderline,   Underline  },
    {IconNew,         New        },
    {IconOpen,        Open       },
    {IconSave,        Save       },
    {IconAlignLeft,   AlignLeft  },
    {IconAlignCenter, AlignCenter},
    {IconAlignRight,  AlignRight },
    {IconFind,        Find       },
    {IconSort,        Sort       },
    {IconFormat,      Format     },
    {IconFullScreen,  FullScreen },
    {IconCommit,      Commit     },
    {IconCancel,      Cancel     },
    {IconQuickEntry,  QuickEntry },
    {IconFunction,    Function   },
    {IconVorn,        Vorn       },
};

} // namespace

const std::span<const IconDrawing> IconDrawings = drawings;

const IconDrawing* findIcon(int icon)
{
    const auto* const found =
        std::find_if(std::begin(drawings), std::end(drawings),
                     [icon](const IconDrawing& drawing) { return drawing.icon == icon; });
    return found != std::end(drawings) ? found : nullptr;
}

} // namespace vorn

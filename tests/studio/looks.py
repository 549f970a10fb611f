"""Other settings of the system for one Studio: a Wine folder of its own, whose programs are those of the one that all
tests share."""
import os
import pathlib
import shutil

# Black ground, white texts, yellow and blue to tell the rest by: each colour is that of nothing else.
CONTRAST = {"Window": (0, 0, 0), "WindowText": (255, 255, 255), "ButtonFace": (0, 0, 16),
            "ButtonText": (255, 255, 254), "Hilight": (26, 235, 255), "HilightText": (1, 0, 0),
            "GrayText": (63, 242, 63), "InfoWindow": (0, 16, 0), "InfoText": (255, 255, 0),
            "ButtonShadow": (128, 128, 129), "ButtonHilight": (192, 192, 193), "ButtonDkShadow": (255, 255, 253),
            "ButtonLight": (160, 160, 161), "MenuBar": (0, 0, 17), "Menu": (0, 0, 17), "MenuText": (255, 255, 252),
            "AppWorkspace": (0, 0, 18), "WindowFrame": (255, 255, 251), "Scrollbar": (0, 0, 19)}


def prefix(folder, dpi=96, colors=None):
    """Makes the folder and gives the environment in which Wine takes it."""
    shared = pathlib.Path(os.environ["WINEPREFIX"])
    own = folder / "wine"
    own.mkdir()
    for name in ("system.reg", "user.reg", "userdef.reg", ".update-timestamp"):
        shutil.copy(shared / name, own)
    shutil.copytree(shared / "dosdevices", own / "dosdevices", symlinks=True)
    (own / "drive_c").symlink_to(shared / "drive_c")
    lines = ["[Control Panel\\\\Desktop] 1", f'"LogPixels"=dword:{dpi:08x}']
    if colors:
        lines += ["[Control Panel\\\\Colors] 1", *(f'"{name}"="{r} {g} {b}"' for name, (r, g, b) in colors.items()),
                  "[Control Panel\\\\Accessibility\\\\HighContrast] 1", '"Flags"="1"',
                  "[Software\\\\Microsoft\\\\Windows\\\\CurrentVersion\\\\ThemeManager] 1", '"ThemeActive"="0"']
    with open(own / "user.reg", "a", encoding="utf-8") as file:
        file.write("\n" + "\n".join(lines) + "\n")
    return {**os.environ, "WINEPREFIX": str(own)}

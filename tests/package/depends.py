"""Holds what libuicontrol-dev depends on against what building against the installed files takes.

usage: depends.py BUILD-FOLDER WORK-FOLDER

Installs the development files below the work folder, gathers what they name (packages of CMake and of pkg-config, headers of
others), asks dpkg which Debian package each of those files is of, and looks for that one among the packages that CPack's list
brings along. Ends with 77 where dpkg does not know the libraries.
"""

import functools
import pathlib
import re
import shutil
import subprocess
import sys

build, work = map(pathlib.Path, sys.argv[1:3])


def output(*command):
    return subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True).stdout


def names(dependencies):
    """Package names of a Depends field; of alternatives all."""
    return re.findall(r"(?:^|[,|])\s*([a-z0-9][a-z0-9+.-]*)", dependencies)


@functools.lru_cache(None)
def dependencies_of(package):
    asked = subprocess.run(["dpkg-query", "-W", "-f", "${Pre-Depends},${Depends}\n", package], text=True,
                           stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
    return names(asked.stdout.replace("\n", ",")) if asked.returncode == 0 else []


def closure(packages):
    found, waiting = set(), list(packages)
    while waiting:
        package = waiting.pop()
        if package not in found:
            found.add(package)
            waiting += dependencies_of(package)
    return found


def one(where, pattern):
    """The file that answers to a pattern below a folder."""
    found = sorted(where.glob(pattern))
    if not found:
        sys.exit(f"nothing answers to {where}/{pattern}")
    return found[0]


arch = output("dpkg-architecture", "-qDEB_HOST_MULTIARCH").strip() if shutil.which("dpkg-architecture") else "x86_64-linux-gnu"
libraries = pathlib.Path("/usr/lib") / arch


def qt(component):
    return one(libraries / "cmake", f"Qt5{component}/Qt5{component}Config.cmake")


def boost(component):
    return one(libraries / "cmake", f"boost_{component}-*/boost_{component}-config.cmake")


def module(name):
    return pathlib.Path(output("pkg-config", "--variable=pcfiledir", name).strip()) / f"{name}.pc"


def of_cmake(text):
    """Files that the package file of a shared build finds its dependencies by."""
    text = re.sub(r"if\(FALSE\).*?endif\(\)", "", text, flags=re.S)
    needed = {}
    for package, rest in re.findall(r"find_dependency\((\w+)([^)]*)\)", text):
        components = rest.partition("COMPONENTS")[2].split()
        if package == "PkgConfig":
            needed["PkgConfig"] = pathlib.Path(shutil.which("pkg-config"))
        elif package in ("Qt5", "Boost"):
            if package == "Boost":
                needed["Boost::boost"] = boost("headers")
            for component in components:
                needed[f"{package}::{component}"] = (qt if package == "Qt5" else boost)(component)
        else:
            sys.exit(f"find_dependency({package}): teach this test where its package file is")
    for prefix, name in re.findall(r"pkg_check_modules\((\w+) REQUIRED IMPORTED_TARGET (\w+)\)", text):
        needed[f"PkgConfig::{prefix}"] = module(name)
    return needed


def of_headers(folder):
    """Headers of others that ours include; those of the compiler have no folder in their names."""
    roots = [pathlib.Path("/usr/include") / arch / "qt5", pathlib.Path("/usr/include"), pathlib.Path("/usr/include") / arch]
    needed = {}
    for header in folder.rglob("*.h"):
        for name in re.findall(r"^#include <([^>]+/[^>]+)>", header.read_text(encoding="utf-8"), flags=re.M):
            found = [root / name for root in roots if (root / name).exists()]
            if not found:
                sys.exit(f"{header.name} includes <{name}>, which is nowhere")
            needed[f"<{name}>"] = found[0]
    return needed


if subprocess.run(["dpkg-query", "-S", str(one(libraries / "cmake", "Qt5Core/Qt5CoreConfig.cmake"))],
                  stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL).returncode:
    print("Qt is none of dpkg's packages here")
    sys.exit(77)

shutil.rmtree(work, ignore_errors=True)
output("cmake", "--install", str(build), "--prefix", str(work), "--component", "development")
config = next(work.rglob("uicontrolConfig.cmake")).read_text()
needed = of_cmake(config)
for targets in work.rglob("*Targets.cmake"):
    for target in re.findall(r"\b((?:Qt5|Boost|PkgConfig)::\w+)", targets.read_text()):
        if target not in needed:
            sys.exit(f"{targets.name} links {target}, which uicontrolConfig.cmake does not find")
for file in work.rglob("*.pc"):
    for name in re.search(r"^Requires:(.*)$", file.read_text(), flags=re.M).group(1).split():
        if not name.startswith("uicontrol"):
            needed[f"{name}.pc"] = module(name)
needed.update(of_headers(work / "include"))
shutil.rmtree(work)

listed = re.search(r'CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS "([^"]*)"', (build / "CPackConfig.cmake").read_text())
brought = closure(names(listed.group(1)))
owners = {}
needed = {name: path.resolve() for name, path in needed.items()}
asked = subprocess.run(["dpkg-query", "-S", *sorted({str(path) for path in needed.values()})], text=True,
                       stdout=subprocess.PIPE)
if asked.returncode:
    print("some of what is built against is of none of dpkg's packages here")
    sys.exit(77)
for line in asked.stdout.splitlines():
    packages, _, path = line.partition(": ")
    owners[path] = {package.split(":")[0] for package in packages.split(", ")}
missing = sorted(f"{name} ({', '.join(sorted(owners[str(path)]))})" for name, path in needed.items()
                 if not owners[str(path)] & brought)
if missing:
    sys.exit(f"libuicontrol-dev depends on {listed.group(1)}, which does not bring: " + "; ".join(missing))
print(f"{len(needed)} files of others, all of packages that libuicontrol-dev brings along")

# The Debian packages that Quillmark needs, by name: the one place for them.

# To build and start the program. qt6-base-dev brings the X11 platform plugin, qt6-wayland the Wayland one;
# qt6-l10n-tools compiles the catalogues of translated texts, qt6-translations-l10n has those of Qt's own dialogs.
runPackages=(
  cmake
  fonts-dejavu-core
  g++
  libcli11-dev
  libdeflate-dev
  libebml-dev
  libmatroska-dev
  ninja-build
  nlohmann-json3-dev
  qt6-base-dev
  qt6-l10n-tools
  qt6-translations-l10n
  qt6-wayland
  zlib1g-dev
)

# To make a package of it: binutils strips the programs, file and dpkg-dev find the libraries' packages.
packagePackages=(
  "${runPackages[@]}"
  binutils
  dpkg-dev
  file
)

# To build and run the tests, benchmarks, fuzz targets and checks as well.
testPackages=(
  "${packagePackages[@]}"
  appstream
  clang-14
  clang-format-14
  clang-tidy-14
  desktop-file-utils
  dvdauthor
  ffmpeg
  groff-base
  gstreamer1.0-plugins-bad
  gstreamer1.0-plugins-good
  gstreamer1.0-tools
  libavcodec-dev
  libavformat-dev
  libbenchmark-dev
  libclang-14-dev
  libclang-rt-14-dev
  libgmock-dev
  libgtest-dev
  lintian
  lld-14
  llvm-14
  llvm-14-dev
  mkvtoolnix
  pkg-config
  pngcheck
  python3
  shared-mime-info
)

"""Makes the help from its Markdown sources: web pages in OUTPUT/html and OUTPUT/Orrery.chm."""

import argparse
import pathlib
import shutil
import sys

import chm
import html_help
import pages as sources


def fresh_folder(folder, pictures_folder, pictures):
    shutil.rmtree(folder, ignore_errors=True)
    (folder / "images").mkdir(parents=True)
    for picture in pictures:
        shutil.copy(pictures_folder / picture, folder / "images")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--source", type=pathlib.Path, required=True,
                        help="folder of the pages, contents.txt and the two style sheets")
    parser.add_argument("--pictures", type=pathlib.Path, required=True,
                        help="folder of the screenshots")
    parser.add_argument("--chmcmd", required=True, help="the compiler of .chm files")
    parser.add_argument("--version", required=True)
    parser.add_argument("--output", type=pathlib.Path, required=True)
    options = parser.parse_args()

    groups = sources.read_contents(options.source)
    pages = sources.pages_of(groups)
    wanted = sources.pictures_of(pages)
    pictures = [name for name in wanted if (options.pictures / name).is_file()]
    for name in sorted(set(wanted) - set(pictures)):
        print(f"warning: the help shows {options.pictures / name}, which does not exist",
              file=sys.stderr)

    web = options.output / "html"
    fresh_folder(web, options.pictures, pictures)
    html_help.write(groups, pages, options.source / "style.css", options.version, web)

    project = options.output / "chm"
    fresh_folder(project, options.pictures, pictures)
    chm.write(groups, pages, pictures, options.source / "chm.css", project)
    chm.compile_project(options.chmcmd, project)
    shutil.move(project / "Orrery.chm", options.output / "Orrery.chm")


if __name__ == "__main__":
    main()

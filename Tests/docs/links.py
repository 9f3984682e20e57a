"""That whoever follows a link of a page gets there, and that every page can be reached."""
import unittest

import pages


class Links(unittest.TestCase):

    def test_lead_somewhere(self):
        broken = []
        for name in pages.FILES:
            page = pages.read(name)
            for link in page.links():
                path, _, anchor = link.partition("#")
                target = (page.path.parent / path).resolve() if path else page.path
                if not target.exists():
                    broken.append(f"{name}: {link}")
                elif anchor and anchor not in pages.read(str(target.relative_to(pages.SOURCE))).anchors():
                    broken.append(f"{name}: no heading for {link}")
        self.assertEqual(broken, [])

    def test_lead_from_the_readme_to_every_page(self):
        reached, open_pages = set(), ["README.md"]
        while open_pages:
            page = pages.read(open_pages.pop())
            reached.add(page.path)
            for link in page.links():
                target = (page.path.parent / link.partition("#")[0]).resolve()
                if target.suffix == ".md" and target not in reached:
                    open_pages.append(str(target.relative_to(pages.SOURCE)))
        self.assertEqual({pages.SOURCE / name for name in pages.FILES} - reached, set())

    def test_lead_from_the_readme_itself_to_the_documentation(self):
        linked = {link.partition("#")[0] for link in pages.read("README.md").links()}
        self.assertEqual({name for name in pages.FILES if name.startswith("Documentation/")} - linked, set())


if __name__ == "__main__":
    unittest.main()

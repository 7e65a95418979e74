# SPDX-License-Identifier: Apache-2.0
"""English for make_pages.py: sentences, headings, names and amounts, from word lists of the project's own.

Everybody and everything named is invented. Plain words and plain ASCII: a page is to show how well its
picture can be read, not how many words a recogniser knows.
"""

PEOPLE = ("the baker", "the ferryman", "our neighbour", "the old clerk", "the gardener", "a young painter",
          "the watchmaker", "the school", "the harbour master", "a careful builder", "the librarian",
          "my sister", "the miller", "the night guard", "the council", "a travelling actor",
          "the carpenter", "the doctor")
ACTIONS = ("has repaired", "sold", "wrote about", "carried away", "has measured", "would like to see",
           "found", "painted", "has promised", "paid for", "remembers", "kept", "collected", "cannot find",
           "brought back", "has ordered", "looked after", "described")
THINGS = ("the green door", "three boxes of glass", "a letter from the north", "the stone bridge",
          "an iron key", "seven wooden chairs", "the map of the valley", "a basket of apples",
          "the long rope", "two silver spoons", "the clock above the gate", "a small boat",
          "the winter coats", "an empty bottle", "the garden wall", "a pair of boots", "the account book",
          "fresh bread and cheese")
PLACES = ("near the river", "in the market square", "behind the mill", "at the end of the lane",
          "by the station", "on the upper floor", "under the old roof", "along the coast",
          "beside the well", "in the next village", "between two hills", "at the town hall",
          "over the bridge", "in a quiet corner of the yard")
TIMES = ("before noon", "on Monday morning", "last winter", "after the rain", "every spring",
         "at six in the evening", "during the harvest", "without any delay", "for the first time",
         "on the way home", "two weeks later", "when the wind had dropped", "as soon as the road was dry",
         "in the middle of the night")
OPENINGS = ("Nobody doubts that", "It is said that", "We are glad to hear that", "Please note that",
            "You may know that", "As a rule,", "To our surprise,", "The report says that",
            "Most people think that", "In the end,", "From that day on,", "It was decided that",
            "Two witnesses confirm that", "Even so,")
CLOSINGS = ("and there was nothing more to do", "and the work went on", "but the price was too high",
            "because the days were growing short", "so that everyone could see it",
            "and that was the end of it", "though it was hardly worth the trouble",
            "while the others waited outside", "and the bill was paid", "since nothing else was left",
            "but nobody had asked for it", "and all of them laughed")
TITLES = ("The House by the River", "Notes on the Harvest", "Rules for Visitors",
          "A Short History of the Mill", "Repairs and Deliveries", "The Winter Market", "How to Keep Bees",
          "Letters from the Coast", "On the Care of Tools", "The Garden in March", "Public Notice",
          "Report of the Council", "A Walk in the Hills", "Bread and Salt", "The Ferry and Its Crew",
          "Meeting of the Members", "Weather in the Valley")
SUBTITLES = ("What was done", "What is left to do", "Costs", "Opening hours", "The first years",
             "Tools and timber", "A word of thanks", "Things to remember", "The upper field", "Next summer",
             "Water and light", "In brief")
GOODS = ("Apples", "Brown bread", "Candles", "Copper wire", "Door handle", "Garden hose", "Green tea",
         "Honey", "Ink bottle", "Lamp oil", "Linen cloth", "Milk", "Note paper", "Olive oil", "Paint brush",
         "Pencils", "Red onions", "Rice", "Rope", "Sea salt", "Soap", "Sugar", "Tomatoes", "Wall hooks",
         "Wood glue", "Wool socks", "Yellow paint")
TASKS = ("Sweep the yard and lock the gate", "Count the boxes in the cellar",
         "Oil the hinges of every door", "Write to the owner of the field", "Bring two lamps and a ladder",
         "Keep the receipt for one year", "Return the keys before Friday", "Close the water tap in winter",
         "Ask for a copy of the plan", "Weigh the parcel twice", "Put the small tools in the drawer",
         "Leave the windows open at noon", "Check the ropes of the boat", "Water the young trees",
         "Sign both sides of the form")
FIRST_NAMES = ("Alma", "Bertram", "Clara", "Edmund", "Flora", "Gregory", "Hanna", "Jasper", "Martha",
               "Oscar", "Paula", "Victor")
LAST_NAMES = ("Ashdown", "Birchall", "Carver", "Dunmore", "Fielding", "Greyson", "Halloway", "Marsden",
              "Penrose", "Stokes", "Thornbury", "Wexley")
TRADES = ("Bookbinder", "Carpenter", "Clockmaker", "Land Surveyor", "Gardener", "Interpreter",
          "Piano Tuner", "Roofer")
TOWNS = ("Eastmere", "Fernhollow", "Greybridge", "Longwater", "Millbrook", "Northgate", "Saltmarsh",
         "Westbury")
STREETS = ("Baker Street", "Bridge Road", "Chapel Lane", "Harbour Street", "High Street", "Mill Lane",
           "Orchard Road")
FIRMS = ("Corner Shop", "Farm Store", "General Store", "Garden Centre", "Hardware", "Market Hall",
         "Stationers", "Tea House")
MONTHS = ("January", "February", "March", "April", "May", "June", "July", "August", "September", "October",
          "November", "December")
SEAL_TEXTS = (("TOWN COUNCIL", "APPROVED"), ("MILLBROOK POST", "RECEIVED"), ("HARBOUR OFFICE",
              "PAID IN FULL"), ("GREYBRIDGE MILL", "CHECKED TWICE"), ("LAND REGISTER", "TRUE COPY"))


class Words:
    """Draws words with one random generator, so that a page's seed fixes them all."""

    def __init__(self, rng):
        self.rng = rng

    def one_of(self, choices):
        return choices[int(self.rng.integers(len(choices)))]

    def number(self, low, high):
        return int(self.rng.integers(low, high + 1))

    def date(self):
        return f"{self.number(1, 28)} {self.one_of(MONTHS)} {self.number(1962, 2024)}"

    def amount(self):
        return f"{self.number(1, 480)}.{self.number(0, 99):02}"

    def name(self):
        return f"{self.one_of(FIRST_NAMES)} {self.one_of(LAST_NAMES)}"

    def clause(self):
        parts = [self.one_of(PEOPLE), self.one_of(ACTIONS), self.one_of(THINGS)]
        if self.rng.random() < 0.6:
            parts.append(self.one_of(PLACES))
        if self.rng.random() < 0.5:
            parts.append(self.one_of(TIMES))
        return " ".join(parts)

    def sentence(self):
        kind = self.rng.random()
        if kind < 0.35:
            text = self.clause()
        elif kind < 0.60:
            text = f"{self.one_of(OPENINGS)} {self.clause()}"
        elif kind < 0.80:
            text = f"{self.clause()}, {self.one_of(CLOSINGS)}"
        elif kind < 0.90:
            text = f"on {self.date()} {self.clause()} and paid {self.amount()} for it"
        else:
            text = f"there were {self.number(12, 980)} people in {self.one_of(TOWNS)} {self.one_of(TIMES)}"
        return text[0].upper() + text[1:] + "."

    def paragraph(self):
        return " ".join(self.sentence() for _ in range(self.number(2, 5)))

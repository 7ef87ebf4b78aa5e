"""What the console should show, worked out anew from what the service says."""

import re

STAGES = ["discovered", "questions_sent", "answers_received", "plan_sent", "bid_placed",
          "awarded", "rejected", "completed"]


def money(amount):
    return f"${amount:.2f}"


def dashboard(summary):
    """The six tiles as (label, value), then the two money tiles."""
    counts = summary["status_counts"]
    tiles = [("Discovered", counts.get("discovered", 0)),
             ("Questions", counts.get("questions_sent", 0)),
             ("Bids Active", counts.get("bid_placed", 0)),
             ("Awarded", counts.get("awarded", 0)),
             ("Decisions", summary["pending_decisions"]),
             ("Completed", counts.get("completed", 0))]
    return [(label, str(count)) for label, count in tiles] + [
        ("Bids Pending", money(summary["bids_pending"])),
        ("Total Earned", money(summary["total_earned"]))]


def words(status):
    """A status word as a badge or chip shows it."""
    return " ".join(word.capitalize() for word in status.split("_"))


def whole_money(amount):
    return f"${amount:.0f}"


def moment(time):
    """A time as the workspace shows it."""
    return time[:19].replace("T", " ")


def present(*texts):
    """What is not missing and not empty."""
    return [text for text in texts if text]


def stages(projects, status=None, search=""):
    """The projects as the list groups them: (header, [project]), empty groups left out."""
    kept = [project for project in projects
            if status in (None, project.get("bid_status"))
            and search.casefold() in project["title"].casefold()]
    groups = [(stage.replace("_", " ").upper(),
               [project for project in kept if project.get("bid_status") == stage])
              for stage in STAGES]
    return [group for group in groups if group[1]]


def project_row(project):
    """One project's row in the list."""
    amount = project.get("bid_amount")
    return [*present(project.get("ref_number")), project["title"],
            words(project.get("bid_status") or "unknown"),
            *([] if amount is None else [whole_money(amount)]),
            *present(project.get("owner_username")),
            f"FL#{project.get('freelancer_project_id', 0)}"]


def header(detail):
    """The workspace's header; a repository's link comes at the end of its first line."""
    amount = detail.get("bid_amount")
    return [*present(detail.get("ref_number")), words(detail.get("bid_status") or "unknown"),
            *([] if amount is None else [money(amount)]),
            *(["GitHub"] if detail.get("github_repo_url") else []),
            f"FL#{detail.get('freelancer_project_id', 0)}"]


def overview(detail):
    parts = [("Description", detail.get("description")),
             ("Delivery Plan", detail.get("delivery_plan"))]
    return [text for title, body in parts if body for text in (title, body)]


def questions(detail):
    asked = [line.strip(" \t") for line in (detail.get("questionnaire") or "").split("\n")
             if re.match(r"\d+[.)]", line)]
    if not asked:
        return ["No questions generated yet"]
    answers = _answers(detail.get("owner_answers") or "")
    return [text for index, question in enumerate(asked)
            for text in ([question, "Answered", answers[index]] if answers.get(index)
                         else [question, "Waiting"])]


def _answers(text):
    answers, current = {}, -1
    for line in text.split("\n"):
        number = re.match(r"(\d+)[.)]", line)
        rest = line[number.end():] if number else line
        rest = rest.strip(" \t")
        if number:
            current = int(number[1]) - 1
            if rest:
                answers[current] = rest
        elif current >= 0 and rest:
            answers[current] = f"{answers[current]}\n{rest}" if answers.get(current) else rest
    return answers


def chat(messages):
    return [text for message in messages
            for text in (words(message["sender"]), message["message_text"])] or [
                "No messages yet"]


def bids(detail, offers):
    own = next((bid for bid in offers if bid.get("is_ours")), None)
    others = [bid for bid in offers if not bid.get("is_ours")]
    if own:
        texts = ["OUR BID", money(own.get("amount", 0)), f"{own.get('period', 0)} days"]
    elif detail.get("bid_amount") is not None:
        texts = ["Our Bid", money(detail["bid_amount"])]
    else:
        texts = []
    texts.append(f"COMPETING BIDS ({len(others)})" if others else "No competing bids yet")
    return texts + [text for bid in others for text in _competitor(bid)]


def _competitor(bid):
    return [f"@{bid.get('username', 'unknown')}",
            *present(bid.get("display_name"), bid.get("country")),
            money(bid.get("amount", 0)), f"/ {bid.get('period', 0)} days",
            *([f"{bid['rating']:.1f}"] if "rating" in bid else []),
            *([f"({bid['reviews']})"] if "reviews" in bid else []),
            *present(bid.get("description"))]


def development(events):
    return [text for event in events
            for text in (event["event"], *present(event.get("detail")),
                         *([moment(event["time"])] if "time" in event else []))] or [
                             "No development activity yet"]


def logs(entries):
    return [text for entry in entries
            for text in (entry["log_type"].replace("_", " "),
                         *([moment(entry["created_at"])] if "created_at" in entry else []),
                         entry["content"])] or ["No development logs yet"]


def decisions(asked):
    """The texts; a pending decision's field and button are no texts."""
    return [text for decision in asked for text in _decision(decision)] or [
        "No decisions requested"]


def _decision(decision):
    texts = [words(decision["status"])]
    if "notified_at" in decision:
        texts.append(moment(decision["notified_at"]))
    texts.append(decision["question"])
    if decision["status"] != "pending" and decision.get("answer"):
        texts += ["Answer:", decision["answer"]]
    return texts


def reports(written):
    return [text for report in written for text in _report(report)] or ["No daily reports yet"]


def _report(report):
    texts = [report.get("report_date", "Unknown date")]
    for label, key in (("Commits", "commit_diff_summary"), ("Changes", "claude_md_diff")):
        if report.get(key):
            texts += [label, report[key]]
    return texts

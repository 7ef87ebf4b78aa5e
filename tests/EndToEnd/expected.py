"""What the console should show, worked out anew from what the service says."""

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

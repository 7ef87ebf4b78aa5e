import TrellisportManager.ProjectDetail
import TrellisportManager.ProjectsList
import QtQuick

// The projects list with what it opens.
ProjectsListView {
    workspace: Component {
        ProjectDetailView {
            id: detail

            viewModel: ProjectDetailViewModel {
                projectId: detail.projectId
            }
        }
    }
}
